// What the page says by itself: short notices that are also read aloud.

import { html, nothing, type TemplateResult } from 'lit';
import { repeat } from 'lit/directives/repeat.js';
import type { Link } from '../protocol/connection.js';
import { restart, warning } from './icons.js';

export type NoticeKind = 'restarted' | 'refused';
export interface Notice { id: number; kind: NoticeKind; text: string }

export function noticeList(notices: Notice[], dismiss: (id: number) => void): TemplateResult {
  return html`<div class="notices" role="status" aria-live="polite">
    ${repeat(notices, (notice) => notice.id, (notice) => html`<div class="notice ${notice.kind}">
      ${notice.kind === 'restarted' ? restart() : warning()}
      <p>${notice.text}</p>
      <button type="button" class="notice-close" aria-label="Dismiss" @click=${() => dismiss(notice.id)}>×</button>
    </div>`)}
  </div>`;
}

const attemptsUntilAdvice = 4;

export function linkBanner(link: Link, retry: () => void): TemplateResult | typeof nothing {
  if (link.state !== 'lost') return nothing;
  return html`<div class="link-banner" role="alert">
    ${warning()}
    <p><strong>The connection is lost.</strong> What you see is as it was; it is tried again by itself.
      ${link.attempts >= attemptsUntilAdvice
        ? html`If the server has ended, start <code>zentrova-settings serve</code> and open the address that it prints.`
        : nothing}</p>
    <button type="button" @click=${retry}>Try now</button>
  </div>`;
}
