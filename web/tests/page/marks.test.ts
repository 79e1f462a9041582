import { expect, test } from "vitest";
import { type Box, type Mark, boxAbout, damage } from "../../page/view/marks.ts";

const mark = (key: string, x: number, y: number): Mark => ({ key, box: boxAbout([[x, y]], 5), draw: () => {} });
const covers = (boxes: readonly Box[], { box }: Mark): boolean =>
  boxes.some(({ left, top, right, bottom }) => left <= box.left && top <= box.top && right >= box.right && bottom >= box.bottom);

test("of a sheet just the places are drawn again where a mark came, went or moved", () => {
  const still = [mark("S", 20, 20), mark("N", 300, 30)];
  const [from, to, far] = [mark("A at 200 200", 200, 200), mark("A at 204 200", 204, 200), mark("A at 400 10", 400, 10)];
  expect(damage([...still, from], [...still, from])).toEqual([]);
  expect(damage([...still, from], [...still, to])).toEqual([{ left: 195, top: 195, right: 209, bottom: 205 }]);
  expect(damage([...still, from], [...still, far])).toHaveLength(2); // not all that lies between
  for (const now of [[...still, to], [...still, far], still, []]) {
    const boxes = damage([...still, from], now);
    const changed = [...[...still, from].filter((one) => !now.includes(one)), ...now.filter((one) => one === to || one === far)];
    for (const one of changed) expect(covers(boxes, one), one.key).toBe(true);
    for (const one of still.filter((one) => now.includes(one))) expect(covers(boxes, one), one.key).toBe(false);
  }
});
