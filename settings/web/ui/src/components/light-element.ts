import { LitElement } from 'lit';

/**
 * A component without a shadow root: the page's style sheet applies to its content, and labels and
 * live regions may refer across components.
 */
export class LightElement extends LitElement {
  protected override createRenderRoot(): HTMLElement {
    return this;
  }
}
