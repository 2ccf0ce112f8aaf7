// Sets style properties on an element one by one. lit's own styleMap first writes the style attribute,
// which a strict content security policy refuses.

import { nothing } from 'lit';
import { Directive, directive, PartType, type ElementPart, type PartInfo } from 'lit/directive.js';

export type Styles = Record<string, string | number | undefined | null>;

class StyledDirective extends Directive {
  private _set = new Map<string, string>();

  constructor(info: PartInfo) {
    super(info);
    if (info.type !== PartType.ELEMENT) throw new Error('styled() must be used on an element');
  }

  render(_styles: Styles): typeof nothing {
    return nothing;
  }

  override update(part: ElementPart, [styles]: [Styles]): typeof nothing {
    const style = (part.element as HTMLElement).style;
    for (const name of this._set.keys()) {
      if (styles[name] === undefined || styles[name] === null) {
        style.removeProperty(name);
        this._set.delete(name);
      }
    }
    for (const [name, value] of Object.entries(styles)) {
      if (value === undefined || value === null || this._set.get(name) === String(value)) continue;
      style.setProperty(name, String(value));
      this._set.set(name, String(value));
    }
    return nothing;
  }
}

/** Use: `<div ${styled({ height: '44px', '--fill': 0.5 })}>`. Undefined members are removed. */
export const styled = directive(StyledDirective);
