// The page's own messages: short notices that are also read aloud.

import { html, nothing, type TemplateResult } from 'lit';
import { repeat } from 'lit/directives/repeat.js';
import type { Link } from '../protocol/connection.js';
import { compass, restart, warning } from './icons.js';

export type NoticeKind = 'restarted' | 'refused' | 'address';
/** `address` is the target of the notice's link. */
export interface Notice { id: number; kind: NoticeKind; text: string; address?: string }

/** The address if it is a web address, otherwise undefined. Only web addresses may become links. */
export function webAddress(text: string | undefined): string | undefined {
  try {
    const url = new URL(text ?? '');
    return ['http:', 'https:'].includes(url.protocol) ? url.href : undefined;
  } catch {
    return undefined;
  }
}

export function noticeList(notices: Notice[], dismiss: (id: number) => void): TemplateResult {
  return html`<div class="notices" role="status" aria-live="polite">
    ${repeat(notices, (notice) => notice.id, (notice) => html`<div class="notice ${notice.kind}">
      ${{ restarted: restart, refused: warning, address: compass }[notice.kind]()}
      <p>${notice.text}${notice.address === undefined ? nothing : html`
        <a href=${notice.address} target="_blank" rel="noopener noreferrer" @click=${() => dismiss(notice.id)}>${notice.address}</a>`}</p>
      <button type="button" class="notice-close" aria-label="Dismiss" @click=${() => dismiss(notice.id)}>×</button>
    </div>`)}
  </div>`;
}

const attemptsUntilAdvice = 4;

/** `program` is the name of the program that serves the page, if known. */
export function linkBanner(link: Link, program: string | undefined, retry: () => void): TemplateResult | typeof nothing {
  if (link.state !== 'lost') return nothing;
  return html`<div class="link-banner" role="alert">
    ${warning()}
    <p><strong>The connection is lost.</strong> The page shows the last known state and reconnects automatically.
      ${link.attempts >= attemptsUntilAdvice
        ? html`If the server has ended, start ${program === undefined ? 'it again' : html`<code>${program} serve</code>`} and open the address that it prints.`
        : nothing}</p>
    <button type="button" @click=${retry}>Try now</button>
  </div>`;
}
