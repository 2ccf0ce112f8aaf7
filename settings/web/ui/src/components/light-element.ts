import { LitElement } from 'lit';

/**
 * A component whose content stands in the document itself, so that one style sheet of the page
 * reaches it and labels and live regions may refer across components.
 */
export class LightElement extends LitElement {
  protected override createRenderRoot(): HTMLElement {
    return this;
  }
}
