// The device: its frame, its status bar, and the application's content on its screen.

import { html, nothing, type TemplateResult } from 'lit';
import { keyed } from 'lit/directives/keyed.js';
import type { Device } from '../protocol/tree.js';
import { styled } from '../directives/styled.js';
import './color-picker.js';
import { cssRgb, parseTint, readable } from './color.js';
import { isDark, type Context } from './context.js';
import { alertDialog, crashReport, waitingDialog } from './dialogs.js';
import { statusIcons } from './icons.js';
import './image-picker.js';
import './navigation.js';

/** The dimensions of a device, in points. */
export interface Shape {
  width: number;
  height: number;
  safeTop: number;
  safeBottom: number;
  corner: number;
  bezel: number;
  notch: boolean;
}

const tallScreen = 2;

export function shapeOf(device: Device): Shape {
  const { width = 390, height = 844 } = device.screen ?? {};
  if (device.idiom === 'pad') return { width, height, safeTop: 24, safeBottom: 20, corner: 18, bezel: 22, notch: false };
  const notch = height / width > tallScreen;
  return notch
    ? { width, height, safeTop: 47, safeBottom: 34, corner: 47, bezel: 12, notch }
    : { width, height, safeTop: 20, safeBottom: 0, corner: 4, bezel: 14, notch };
}

export function framedScreen(context: Context, shape: Shape, scale: number): TemplateResult {
  const { width, height, corner, bezel } = shape;
  const outer = { width: `${(width + 2 * bezel) * scale}px`, height: `${(height + 2 * bezel) * scale}px` };
  return html`<div class="device-space" ${styled(outer)}>
    <div class="device ${context.tree.device.idiom === 'pad' ? 'pad' : 'phone'}" ${styled({
      width: `${width}px`, height: `${height}px`, padding: `${bezel}px`, transform: scale === 1 ? undefined : `scale(${scale})`,
      '--corner': `${corner}px`, '--bezel': `${bezel}px`,
    })}>
      <div class="screen" ${styled(screenStyles(context, shape.safeBottom))}>
        ${screenContent(context, shape.safeTop)}
        ${statusBar(shape)}
        ${shape.safeBottom > 0 ? html`<div class="home-indicator" aria-hidden="true"></div>` : nothing}
      </div>
    </div>
  </div>`;
}

/** The screen without the frame, for windows no larger than a phone. */
export function bareScreen(context: Context): TemplateResult {
  return html`<div class="screen bare" ${styled(screenStyles(context, 0))}>
    ${screenContent(context, 0)}
  </div>`;
}

function screenStyles(context: Context, safeBottom: number): Record<string, string> {
  const { device } = context.tree;
  const tint = parseTint(device.tint);
  return {
    '--tint': cssRgb(tint),
    '--tint-text': cssRgb(readable(tint, isDark(context) ? 'dark' : 'light')),
    '--text-scale': String(device.textScale ?? 1),
    '--safe-bottom': `${safeBottom}px`,
  };
}

function screenContent(context: Context, safeTop: number): TemplateResult {
  const { tree } = context;
  const shown = tree.nodes[tree.root]?.children ?? [];
  const over = shown.filter((id) => tree.nodes[id]?.kind !== 'navigation');
  return html`
    <div class="under" ?inert=${over.length > 0}>
      ${shown.filter((id) => tree.nodes[id]?.kind === 'navigation').map((id) =>
        keyed(id, html`<zv-navigation .context=${context} .nodeId=${id} .safeTop=${safeTop}></zv-navigation>`))}
    </div>
    ${over.map((id, index) => keyed(id, html`<div class="over" ?inert=${index < over.length - 1}>${presented(context, id)}</div>`))}`;
}

function presented(context: Context, id: string): TemplateResult | typeof nothing {
  const node = context.tree.nodes[id];
  switch (node?.kind) {
    case 'alert': return alertDialog(context, id, node);
    case 'waiting': return waitingDialog(context, id, node);
    case 'crash': return crashReport(context, id, node);
    case 'colorPicker': return html`<zv-color-picker .context=${context} .node=${node} .nodeId=${id}></zv-color-picker>`;
    case 'imagePicker': return html`<zv-image-picker .context=${context} .node=${node} .nodeId=${id}></zv-image-picker>`;
    default: return nothing;
  }
}

function statusBar(shape: Shape): TemplateResult {
  return html`<div class="status-bar ${shape.notch ? 'notched' : ''}" aria-hidden="true" ${styled({ height: `${shape.safeTop}px` })}>
    <span class="clock">9:41</span>
    ${shape.notch ? html`<span class="notch"></span>` : nothing}
    <span class="status-icons">${statusIcons()}</span>
  </div>`;
}
