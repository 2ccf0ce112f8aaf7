// The few pictures that the page itself draws, as lines on a grid.

import { html, nothing, svg, type TemplateResult } from 'lit';

function icon(name: string, viewBox: string, content: TemplateResult): TemplateResult {
  return html`<svg class="icon icon-${name}" viewBox=${viewBox} aria-hidden="true" focusable="false">${content}</svg>`;
}

export const chevronRight = (): TemplateResult => icon('disclosure', '0 0 8 14', svg`<path d="M1 1l6 6-6 6"/>`);
export const chevronLeft = (): TemplateResult => icon('back', '0 0 12 20', svg`<path d="M10.5 1.5L2 10l8.5 8.5"/>`);
export const checkmark = (): TemplateResult => icon('checkmark', '0 0 14 14', svg`<path d="M1.5 7.8l3.7 4.2L12.5 2"/>`);
export const info = (): TemplateResult =>
  icon('info', '0 0 22 22', svg`<circle cx="11" cy="11" r="9.6"/><path d="M11 10v6M11 6.2v.2"/>`);
export const minus = (): TemplateResult => icon('minus', '0 0 22 22', svg`<circle cx="11" cy="11" r="11"/><path d="M6 11h10"/>`);
export const plus = (): TemplateResult =>
  icon('plus', '0 0 22 22', svg`<circle cx="11" cy="11" r="11"/><path d="M6 11h10M11 6v10"/>`);
export const cross = (): TemplateResult => icon('cross', '0 0 12 12', svg`<path d="M1.5 1.5l9 9M10.5 1.5l-9 9"/>`);
export const grip = (): TemplateResult => icon('grip', '0 0 22 12', svg`<path d="M0 1h22M0 6h22M0 11h22"/>`);
export const warning = (): TemplateResult =>
  icon('warning', '0 0 22 22', svg`<path d="M11 2.5L1.5 19.5h19z"/><path d="M11 8.5v5.5M11 16.6v.2"/>`);
export const restart = (): TemplateResult =>
  icon('restart', '0 0 20 20', svg`<path d="M16.5 10a6.5 6.5 0 1 1-2-4.7"/><path d="M15 1.8v4h-4"/>`);

// Eight spokes; the style sheet turns them.
export const spinner = (): TemplateResult => icon('spinner', '0 0 22 22', svg`${[0, 45, 90, 135, 180, 225, 270, 315].map((angle) =>
  svg`<path d="M11 1.5v5" transform="rotate(${angle} 11 11)" opacity=${0.25 + (angle / 315) * 0.75}/>`)}`);

const safari = svg`<circle cx="11" cy="11" r="9"/><path d="M14.8 7.2l-2.4 5.2-5.2 2.4 2.4-5.2z"/>`;
export const compass = (): TemplateResult => icon('compass', '0 0 22 22', safari);

const symbols: Record<string, TemplateResult> = {
  'chevron.right': svg`<path d="M8 4.5l6.5 6.5L8 17.5"/>`,
  safari,
  photo: svg`<rect x="2" y="4" width="18" height="14" rx="2.5"/><circle cx="7" cy="9" r="1.6"/><path d="M3 16l5-4 3.5 2.6L15 11l5 5"/>`,
  gear: svg`<circle cx="11" cy="11" r="3.2"/><circle cx="11" cy="11" r="7.6" stroke-dasharray="3 2.97"/>`,
  link: svg`<path d="M9 13l4-4M8 9.5L5.4 12a3.3 3.3 0 0 0 4.6 4.6l2.5-2.5M14 12.5l2.6-2.5A3.3 3.3 0 0 0 12 5.4L9.5 7.9"/>`,
};

/**
 * A system symbol by its name. A symbol that is not drawn here is a plain tile. `label` is the text for
 * screen readers, if the text beside the symbol does not say the same.
 */
export function symbol(name: string, label = ''): TemplateResult {
  return html`<svg class="icon symbol" viewBox="0 0 22 22" data-symbol=${name}
    role=${label ? 'img' : nothing} aria-label=${label || nothing} aria-hidden=${label ? nothing : 'true'}>
    ${symbols[name] ?? svg`<rect x="2.5" y="2.5" width="17" height="17" rx="4"/><path d="M8 11h6"/>`}
  </svg>`;
}

const signal = svg`<rect x="0" y="7.5" width="3" height="4" rx=".9"/><rect x="4.7" y="5.2" width="3" height="6.3" rx=".9"/><rect x="9.4" y="2.7" width="3" height="8.8" rx=".9"/><rect x="14.1" y="0" width="3" height="11.5" rx=".9"/>`;
const wifi = svg`<path class="arc" d="M1.2 4.5a10 10 0 0 1 14.2 0M3.7 7a6.6 6.6 0 0 1 9.2 0"/><path d="M8.3 11.4L6 9a3.2 3.2 0 0 1 4.6 0z"/>`;
const battery = svg`<rect class="case" x=".5" y=".5" width="21" height="10.5" rx="3.2"/><rect x="2" y="2" width="18" height="7.5" rx="1.9"/><path d="M23 4v3.6c.8-.3 1.3-1 1.3-1.8S23.8 4.3 23 4z"/>`;

export const statusIcons = (): TemplateResult => html`
  <svg class="status-icon" viewBox="0 0 17.1 11.5" aria-hidden="true">${signal}</svg>
  <svg class="status-icon wifi" viewBox="0 0 16.6 11.5" aria-hidden="true">${wifi}</svg>
  <svg class="status-icon battery" viewBox="0 0 24.5 11.5" aria-hidden="true">${battery}</svg>`;
