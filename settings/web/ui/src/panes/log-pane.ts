import { html, type TemplateResult } from 'lit';
import type { LogEntry } from '../protocol/messages.js';
import type { Sides } from '../protocol/state.js';

/** The messages of the bundle and the platform in the system log, newest last. */
export function logPane(sides: Sides): TemplateResult {
  if (sides.log.length === 0) return html`<p class="pane-empty">Nothing has been logged yet.</p>`;
  return html`<ol class="log">${sides.log.map((entry) => html`<li>
    <time>${timeText(entry.time)}</time><span class="source">${entry.source ?? ''}</span><span class="message">${entry.message}</span>
  </li>`)}</ol>`;
}

function timeText(time: LogEntry['time']): string {
  return typeof time === 'number' ? `${time.toFixed(3)} s` : time;
}
