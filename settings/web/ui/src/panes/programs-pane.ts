import { html, nothing, type TemplateResult } from 'lit';
import type { ProgramRecord } from '../protocol/messages.js';
import type { Sides } from '../protocol/state.js';
import { restart } from '../components/icons.js';

/** The programs that the bundle started, the newest first, and whether the home screen came back. */
export function programsPane(sides: Sides, restarts: number): TemplateResult {
  const { programs = [] } = sides;
  return html`
    ${restarts > 0 ? html`<p class="restart-note">${restart()}The home screen restarted${restarts > 1 ? ` ${restarts} times` : ''}.</p>` : nothing}
    ${programs.length === 0 ? html`<p class="pane-empty">No program has been started.</p>` : html`<ol class="programs" reversed>
      ${[...programs].reverse().map(program)}
    </ol>`}`;
}

function program(record: ProgramRecord): TemplateResult {
  const { environment } = record;
  return html`<li>
    <code class="command">${[record.path, ...(record.arguments ?? []).slice(argumentsStart(record))].join(' ')}</code>
    <span class="program-facts">
      <span>${record.error ? `not started: ${record.error}` : exitText(record.exit)}</span>
      <span>${environment === null ? 'no environment' : environment ? `${environment.length} variables` : ''}</span>
    </span>
  </li>`;
}

// The first argument is by custom the program's own name.
function argumentsStart(record: ProgramRecord): number {
  const first = record.arguments?.[0];
  return first !== undefined && record.path.endsWith(first) ? 1 : 0;
}

function exitText(exit: ProgramRecord['exit']): string {
  if (exit === undefined || exit === null) return 'running';
  return typeof exit === 'number' ? `exit ${exit}` : exit;
}
