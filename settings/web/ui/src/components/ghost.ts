// A picture of an element as it looks now, to be shown while it leaves. It is dead: its components
// are plain elements, it takes no input, and a screen reader does not see it.

export function ghostOf(element: HTMLElement): HTMLElement {
  const inert = document.createElement('template').content.ownerDocument;
  const copy = inert.importNode(element, true);
  copyState(element, copy);
  const ghost = plain(copy);
  for (const component of ghost.querySelectorAll('*')) plain(component as HTMLElement);
  ghost.classList.add('ghost');
  ghost.setAttribute('aria-hidden', 'true');
  ghost.inert = true;
  return ghost;
}

// A component would start to work again as soon as it is in the document.
function plain(element: HTMLElement): HTMLElement {
  element.removeAttribute('id');
  for (const name of ['data-node', 'data-identifier']) element.removeAttribute(name);
  if (!element.localName.includes('-')) return element;
  const stand = element.ownerDocument.createElement('div');
  stand.className = `${element.className} ${element.localName}`;
  stand.append(...element.childNodes);
  element.replaceWith(stand);
  return stand;
}

/** What is no attribute is not copied with an element: values and scroll positions. */
function copyState(from: HTMLElement, to: HTMLElement): void {
  const inputs = to.querySelectorAll('input');
  from.querySelectorAll('input').forEach((input, index) => {
    const copy = inputs[index];
    if (copy) copy.value = input.value;
  });
}

/** Scroll positions can only be set once the ghost is in the document. */
export function copyScroll(from: Element, to: Element): void {
  const source = from.matches('.table-scroll') ? from : from.querySelector('.table-scroll');
  const target = to.matches('.table-scroll') ? to : to.querySelector('.table-scroll');
  if (source && target) target.scrollTop = source.scrollTop;
}
