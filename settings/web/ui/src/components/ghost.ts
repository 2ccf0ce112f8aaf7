// A copy of an element's current look, to show while the element leaves. It is inert: its components are
// plain elements, it takes no input, and screen readers ignore it.

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

// A custom element would become active as soon as it is in the document.
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

/** Copies the state that cloneNode does not copy: the values of inputs. */
function copyState(from: HTMLElement, to: HTMLElement): void {
  const inputs = to.querySelectorAll('input');
  from.querySelectorAll('input').forEach((input, index) => {
    const copy = inputs[index];
    if (copy) copy.value = input.value;
  });
}

/** Copies the scroll position. Call it when the ghost is in the document; it has no effect before. */
export function copyScroll(from: Element, to: Element): void {
  const source = from.matches('.table-scroll') ? from : from.querySelector('.table-scroll');
  const target = to.matches('.table-scroll') ? to : to.querySelector('.table-scroll');
  if (source && target) target.scrollTop = source.scrollTop;
}
