// The film's file turned and mirrored, and what that does to points on it.
import type { Case, Orientation, Point, ScaleOrigin, Work } from "../state/document.ts";

/** In pixels. */
export interface Size {
  readonly width: number;
  readonly height: number;
}

export type Turn = "clockwise" | "anticlockwise" | "mirror" | "upside_down";

export function sizeAs(orientation: Orientation, stored: Size): Size {
  return orientation.quarters % 2 === 0 ? stored : { width: stored.height, height: stored.width };
}

/** Of a point of a picture of this size, counted in pixels whose middles have whole coordinates. */
function turned([x, y]: Point, turn: Turn, { width, height }: Size): Point {
  switch (turn) {
    case "clockwise":
      return [height - 1 - y, x];
    case "anticlockwise":
      return [y, width - 1 - x];
    case "mirror":
      return [width - 1 - x, y];
    case "upside_down":
      return [x, height - 1 - y];
  }
}

function quarters(count: number): Orientation["quarters"] {
  return (((count % 4) + 4) % 4) as Orientation["quarters"];
}

function orientationAfter({ mirrored, quarters: q }: Orientation, turn: Turn): Orientation {
  switch (turn) {
    case "clockwise":
      return { mirrored, quarters: quarters(q + 1) };
    case "anticlockwise":
      return { mirrored, quarters: quarters(q - 1) };
    case "mirror":
      return { mirrored: !mirrored, quarters: quarters(-q) };
    case "upside_down":
      return { mirrored: !mirrored, quarters: quarters(2 - q) };
  }
}

/** Everything that was placed stays on its structure. `size` is that of the film as it is shown before. */
export function turnedWork(work: Work, turn: Turn, size: Size): Work {
  const move = (point: Point): Point => turned(point, turn, size);
  const all = <T extends Readonly<Record<string, Point>> | undefined>(points: T): T =>
    (points && Object.fromEntries(Object.entries(points).map(([name, point]) => [name, move(point)]))) as T;
  const scale: ScaleOrigin | null =
    work.scale?.kind === "ruler"
      ? { kind: "ruler", ruler: { ...work.scale.ruler, from: move(work.scale.ruler.from), to: move(work.scale.ruler.to) } }
      : work.scale;
  const { vertebrae, user, outlines } = work.case;
  const record: Case = {
    ...work.case,
    landmarks: all(work.case.landmarks),
    ...(vertebrae && { vertebrae: all(vertebrae) }),
    ...(user && { user: all(user) }),
    ...(outlines && { outlines: outlines.map((outline) => ({ ...outline, points: outline.points.map(move) })) }),
  };
  return { ...work, case: record, scale, orientation: orientationAfter(work.orientation, turn) };
}
