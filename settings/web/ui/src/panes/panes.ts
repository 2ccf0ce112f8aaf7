// The panes beside the phone: side by side where there is room, else one at a time behind tabs.

import { html, nothing, type TemplateResult } from 'lit';
import type { Context } from '../components/context.js';
import { stopByKey } from '../components/stops.js';
import type { Sides } from '../protocol/state.js';
import { devicePane } from './device-pane.js';
import { filePane } from './file-pane.js';
import { logPane } from './log-pane.js';
import { programsPane } from './programs-pane.js';
import { rowPane } from './row-pane.js';

export interface PaneState {
  context: Context;
  sides: Sides;
  restarts: number;
}

interface Pane {
  name: string;
  title: string;
  short: string;
  content: (state: PaneState) => TemplateResult;
}

const panes = [
  { name: 'file', title: 'Preference file', short: 'File', content: ({ sides }) => filePane(sides) },
  { name: 'row', title: 'Specifier behind the row', short: 'Row', content: ({ sides }) => rowPane(sides) },
  { name: 'log', title: 'Log', short: 'Log', content: ({ sides }) => logPane(sides) },
  { name: 'programs', title: 'Programs started', short: 'Programs', content: ({ sides, restarts }) => programsPane(sides, restarts) },
  { name: 'device', title: 'Device', short: 'Device', content: ({ context }) => devicePane(context) },
] as const satisfies readonly Pane[];

export type PaneName = (typeof panes)[number]['name'];

export function paneGrid(state: PaneState): TemplateResult {
  return html`<div class="pane-grid">${panes.map((pane) => html`
    <section class="pane pane-${pane.name}" aria-labelledby="pane-${pane.name}">
      <h2 id="pane-${pane.name}">${pane.title}</h2>
      ${body(pane, state)}
    </section>`)}</div>`;
}

/** `phone` puts the phone itself in front as the first tab, for windows no larger than one. */
export function paneTabs(state: PaneState, shown: PaneName | 'phone', phone: boolean, select: (name: PaneName | 'phone') => void): TemplateResult {
  const tabs: readonly { name: PaneName | 'phone'; short: string }[] = phone ? [{ name: 'phone', short: 'Settings' }, ...panes] : panes;
  const pane = panes.find((each) => each.name === shown);
  return html`<div class="pane-tabs">
    <div class="tabs" role="tablist" aria-label="Beside the phone" @keydown=${(event: KeyboardEvent) => moveTab(event, tabs.map((tab) => tab.name), shown, select)}>
      ${tabs.map((tab) => html`<button type="button" role="tab" id="tab-${tab.name}" aria-controls=${tab.name === shown ? `panel-${tab.name}` : nothing}
        aria-selected=${tab.name === shown} tabindex=${tab.name === shown ? 0 : -1} @click=${() => select(tab.name)}>${tab.short}</button>`)}
    </div>
    ${pane ? html`<section class="pane pane-${pane.name}" role="tabpanel" id="panel-${pane.name}" aria-labelledby="tab-${pane.name}">
      <h2>${pane.title}</h2>${body(pane, state)}
    </section>` : nothing}
  </div>`;
}

// What scrolls must be reached by the keyboard.
function body(pane: Pane, state: PaneState): TemplateResult {
  return html`<div class="pane-body" tabindex="0" role="group" aria-label=${pane.title} data-pane=${pane.name}>${pane.content(state)}</div>`;
}

function moveTab<T extends string>(event: KeyboardEvent, names: T[], shown: T, select: (name: T) => void): void {
  const target = names[stopByKey(event.key, names.indexOf(shown), names.length, 'sideways') ?? -1];
  if (target === undefined) return;
  event.preventDefault();
  select(target);
  document.getElementById(`tab-${target}`)?.focus();
}
