import assert from 'node:assert/strict';
import { test } from 'node:test';
import { eventually } from '../support/eventually.mjs';
import { useProgram } from '../support/whole.mjs';

const { open } = useProgram();

const scrollerOf = (page) => page.locator('.page:not(.ghost) .table-scroll');

/** The visible rows that show nothing. */
function emptyRows(page) {
  return scrollerOf(page).evaluate((scroller) => {
    const sight = scroller.getBoundingClientRect();
    const isEmpty = (row) => {
      const { top, bottom } = row.getBoundingClientRect();
      return bottom > sight.top && top < sight.bottom && !row.querySelector('.cell');
    };
    return [...scroller.querySelectorAll('.row')].filter(isEmpty).map((row) => row.dataset.identifier);
  });
}

for (const textScale of ['0.82', '1', '1.65', '2.35']) {
  test(`every visible row shows its content, at any scroll position, at the text size ${textScale}`, async () => {
    const { page, trouble, close } = await open({ serveOptions: ['--text-scale', textScale] });
    const isAtEnd = () => scrollerOf(page).evaluate((scroller) => scroller.scrollTop + scroller.clientHeight >= scroller.scrollHeight - 1);
    do {
      await scrollerOf(page).evaluate((scroller) => { scroller.scrollTop += 300; });
      await eventually(async () => (await emptyRows(page)).length === 0, 'every visible row has its cell');
    } while (!(await isAtEnd()));
    assert.deepEqual(trouble, []);
    await close();
  });
}

test('the version is shown below the last row and scrolled into view', async () => {
  const { page, row, close } = await open({ reducedMotion: 'reduce' });
  await row('version').scrollIntoViewIfNeeded();
  await row('version').getByRole('button').click();
  const version = page.getByText('Package: com.hollowmere.zentrova');
  await version.waitFor();
  await eventually(async () => {
    const [text, rows, sight] = [await version.boundingBox(), await row('problemLink').boundingBox(), await page.locator('.screen').boundingBox()];
    return text.y >= rows.y + rows.height && text.y + text.height <= sight.y + sight.height;
  }, 'it is below the rows and on the screen');
  await close();
});

test('a sheet that opens while the table is still scrolling refuses no action', async () => {
  const { page, row, close } = await open({ reducedMotion: 'reduce' });
  await row('hollowmere').scrollIntoViewIfNeeded();
  await row('hollowmere').getByRole('button').click();
  await page.getByRole('alertdialog').waitFor();
  const before = await scrollerOf(page).evaluate((scroller) => (scroller.scrollTop -= 40));
  await page.getByRole('button', { name: 'Cancel' }).click();
  await page.getByRole('alertdialog').waitFor({ state: 'detached' });
  assert.equal(await page.locator('.notice.refused').count(), 0);
  assert.equal(await scrollerOf(page).evaluate((scroller) => scroller.scrollTop), before);
  await close();
});
