// Creates pictures for tests that upload them.

import { randomBytes } from 'node:crypto';
import { deflateSync } from 'node:zlib';

/** The smallest picture: one pixel. */
export const tinyPng = Buffer.from('iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR4nGMwTpv5HwAENAIyWy0K4AAAAABJRU5ErkJggg==', 'base64');

const signature = Buffer.from('89504E470D0A1A0A', 'hex');

/** A PNG of noise, which is hard work for every encoder. */
export function noisyPng(width, height) {
  const header = Buffer.alloc(13);
  header.writeUInt32BE(width, 0);
  header.writeUInt32BE(height, 4);
  header.set([8, 2], 8); // eight bits of red, green and blue
  const pixels = randomBytes(height * (1 + 3 * width));
  for (let row = 0; row < height; row += 1) pixels[row * (1 + 3 * width)] = 0; // not filtered
  const data = deflateSync(pixels, { level: 0 });
  return Buffer.concat([signature, chunk('IHDR', header), chunk('IDAT', data), chunk('IEND', Buffer.alloc(0))]);
}

function chunk(name, data) {
  const body = Buffer.concat([Buffer.from(name), data]);
  const length = Buffer.alloc(4);
  length.writeUInt32BE(data.length);
  const sum = Buffer.alloc(4);
  sum.writeUInt32BE(crc32(body));
  return Buffer.concat([length, body, sum]);
}

const remainders = Uint32Array.from({ length: 256 }, (_, byte) => {
  let remainder = byte;
  for (let bit = 0; bit < 8; bit += 1) remainder = remainder & 1 ? 0xedb88320 ^ (remainder >>> 1) : remainder >>> 1;
  return remainder >>> 0;
});

function crc32(bytes) {
  let sum = 0xffffffff;
  for (const byte of bytes) sum = remainders[(sum ^ byte) & 0xff] ^ (sum >>> 8);
  return (sum ^ 0xffffffff) >>> 0;
}
