// What is presented over the pages: alerts, sheets and the report of a crash.

import { html, nothing, type TemplateResult } from 'lit';
import type { AlertAction, AlertNode, CrashNode, WaitingNode } from '../protocol/tree.js';
import type { Context } from './context.js';
import { warning } from './icons.js';
import './modal.js';

/** The id of what a dialog says beyond its name. */
const textOf = (id: string): string => `text-${id}`;

export function alertDialog(context: Context, id: string, node: AlertNode): TemplateResult {
  const actions = node.actions.map((action, index) => ({ action, index }));
  const cancel = actions.find(({ action }) => action.style === 'cancel');
  const choose = (index: number): void => void context.act({ action: 'choose', node: id, index });
  const leave = (): void => {
    if (cancel) choose(cancel.index);
    else void context.act({ action: 'close', node: id });
  };
  const button = ({ action, index }: { action: AlertAction; index: number }): TemplateResult => html`<button
    type="button" class="alert-action ${action.style ?? 'default'}" @click=${() => choose(index)}>${action.title}</button>`;
  const sheet = node.style === 'sheet';
  const others = actions.filter((each) => each !== cancel);
  const box = sheet || !cancel ? others : inOrder(cancel, others);
  return html`<zv-modal .name=${node.title || node.message || 'Question'} .text=${node.title && node.message ? textOf(id) : undefined} .cancel=${leave} class=${sheet ? 'sheet-modal' : 'alert-modal'}>
    <div class=${sheet ? 'sheet' : 'alert'} data-node=${id}>
      <div class="alert-box">
        ${node.title || node.message ? html`<div class="alert-text">
          ${node.title ? html`<h2>${node.title}</h2>` : nothing}
          ${node.message ? html`<p id=${textOf(id)}>${node.message}</p>` : nothing}
        </div>` : nothing}
        <div class="alert-actions ${!sheet && actions.length === 2 ? 'side-by-side' : ''}">${box.map(button)}</div>
      </div>
      ${sheet && cancel ? html`<div class="alert-box">${button(cancel)}</div>` : nothing}
    </div>
  </zv-modal>`;
}

// Of two the one that cancels is at the left, of more it is the last.
function inOrder<T>(cancel: T, others: T[]): T[] {
  return others.length === 1 ? [cancel, ...others] : [...others, cancel];
}

export function waitingDialog(context: Context, id: string, node: WaitingNode): TemplateResult {
  const stop = (): void => void context.act({ action: 'stop', node: id });
  return html`<zv-modal .name=${'The page waits for a program'} .text=${textOf(id)} .cancel=${stop} class="alert-modal">
    <div class="alert" data-node=${id}>
      <div class="alert-box">
        <div class="alert-text">
          <h2>The page waits for a program</h2>
          <p id=${textOf(id)}>${node.program} has not ended yet. On a device nothing could be touched until it does.</p>
        </div>
        <div class="alert-actions"><button type="button" class="alert-action default" @click=${stop}>Stop</button></div>
      </div>
    </div>
  </zv-modal>`;
}

export function crashReport(context: Context, id: string, node: CrashNode): TemplateResult {
  const go = (action: 'continue' | 'restart') => () => void context.act({ action, node: id });
  return html`<zv-modal .name=${`Crash: ${node.name}`} .text=${textOf(id)} .cancel=${go('continue')} class="crash-modal">
    <div class="crash" data-node=${id}>
      ${warning()}
      <h2>The settings bundle raised an exception</h2>
      <p class="crash-note">On a device the Settings application would have ended here.</p>
      <dl>
        <dt>Name</dt><dd class="crash-name">${node.name}</dd>
        <dt>Reason</dt><dd class="crash-reason" id=${textOf(id)}>${node.reason || 'none given'}</dd>
        ${node.where ? html`<dt>Where</dt><dd>${node.where}</dd>` : nothing}
      </dl>
      <button type="button" class="big-button" @click=${go('continue')}>Continue with the page as it is</button>
      <button type="button" class="big-button secondary" @click=${go('restart')}>Start Settings anew</button>
    </div>
  </zv-modal>`;
}
