// What is drawn over the film, mark by mark, so that of a sheet only the places are drawn again where a mark has changed:
// a dragged landmark changes a few hundred pixels of a million.

/** In CSS pixels of the view. */
export interface Box {
  readonly left: number;
  readonly top: number;
  readonly right: number;
  readonly bottom: number;
}

export interface Mark {
  /** Marks with the same key look the same. */
  readonly key: string;
  /** All that it draws lies in there. */
  readonly box: Box;
  /** Leaves the context's line dash and transparency as they were. */
  draw(context: CanvasRenderingContext2D): void;
}

export function boxAbout(points: Iterable<readonly [x: number, y: number]>, edge: number): Box {
  let [left, top, right, bottom] = [Infinity, Infinity, -Infinity, -Infinity];
  for (const [x, y] of points) {
    left = Math.min(left, x - edge);
    top = Math.min(top, y - edge);
    right = Math.max(right, x + edge);
    bottom = Math.max(bottom, y + edge);
  }
  return { left, top, right, bottom };
}

function meet(one: Box, other: Box): boolean {
  return one.left < other.right && other.left < one.right && one.top < other.bottom && other.top < one.bottom;
}

/** Boxes that do not meet, over all of the given ones. */
function apart(boxes: readonly Box[]): Box[] {
  const found: Box[] = [];
  for (let box of boxes) {
    for (let at = 0; at < found.length; ) {
      const other = found[at]!;
      if (!meet(box, other)) {
        ++at;
        continue;
      }
      found.splice(at, 1);
      box = boxAbout([[box.left, box.top], [box.right, box.bottom], [other.left, other.top], [other.right, other.bottom]], 0);
      at = 0; // it has grown
    }
    found.push(box);
  }
  return found;
}

/** What changes on the sheet from one list of marks to the next, each drawn in its order. */
export function damage(before: readonly Mark[], now: readonly Mark[]): Box[] {
  const old = new Set(before.map(({ key }) => key));
  const young = new Set(now.map(({ key }) => key));
  return apart([...before.filter(({ key }) => !young.has(key)), ...now.filter(({ key }) => !old.has(key))].map(({ box }) => box));
}

/** Draws again what of the sheet the boxes hold, in a context of `ratio` pixels for each of the view. */
export function redraw(context: CanvasRenderingContext2D, marks: readonly Mark[], boxes: readonly Box[], ratio: number): void {
  if (boxes.length === 0) return;
  const whole = boxes.map((box) => ({
    left: Math.floor(box.left * ratio) / ratio,
    top: Math.floor(box.top * ratio) / ratio,
    right: Math.ceil(box.right * ratio) / ratio,
    bottom: Math.ceil(box.bottom * ratio) / ratio,
  }));
  context.save();
  context.beginPath();
  for (const { left, top, right, bottom } of whole) context.rect(left, top, right - left, bottom - top);
  context.clip();
  for (const { left, top, right, bottom } of whole) context.clearRect(left, top, right - left, bottom - top);
  for (const mark of marks) if (whole.some((box) => meet(box, mark.box))) mark.draw(context);
  context.restore();
}
