// Mouse, pen and fingers on the film.
//
// A press that does not move places what is asked for; one that moves drags the landmark below it, or else the film. A
// finger would hide what it points at, so the point lies above it, and lifting the finger places.
import { batch } from "@preact/signals";
import { draftRuler, putRulerEnd } from "../calibrate/draft.ts";
import { chooseLandmark, placeLandmark } from "../place/guide.ts";
import { film, history, landmarkNames, record, tool, view } from "../state/desk.ts";
import type { Point } from "../state/document.ts";
import { oncePerFrame } from "../state/frames.ts";
import { constructed } from "../state/measuring.ts";
import { allPlaced, placed, positionOf } from "../state/work.ts";
import { snapped } from "./snapping.ts";
import { windowDragged } from "../tone/window_drag.ts";
import { panned, toFilm, toScreen, zoomed } from "./camera.ts";
import { camera, dragged, hovered, keyboardCursor, moveCamera, pointer, touching } from "./stage.ts";

const fingerOffset = 64; // CSS pixels from the finger up to the point that it means
const stillness = 4; // CSS pixels that a press may move without being a drag
const mouseReach = 9;
const fingerReach = 26;

type Press =
  | { readonly kind: "point"; moved: boolean }
  | { readonly kind: "landmark"; readonly name: string; readonly grip: Point; moved: boolean }
  | { readonly kind: "ruler end"; readonly index: number; readonly grip: Point; moved: boolean }
  | { readonly kind: "pan"; moved: boolean }
  | { readonly kind: "window"; moved: boolean }
  | { readonly kind: "pinch" };

function nearest<Name>(places: Iterable<readonly [Name, Point]>, at: Point, reach: number): Name | null {
  let found: Name | null = null;
  let least = reach;
  for (const [name, place] of places) {
    const [x, y] = toScreen(camera.peek(), place);
    const distance = Math.hypot(x - at[0], y - at[1]);
    if (distance <= least) {
      least = distance;
      found = name;
    }
  }
  return found;
}

function landmarkAt(at: Point, reach: number): string | null {
  return nearest([...constructed.peek(), ...allPlaced(record.peek())], at, reach);
}

/** Above the finger, where that is what points. */
function meant(event: PointerEvent, at: Point): Point {
  return event.pointerType === "touch" ? [at[0], at[1] - fingerOffset] : at;
}

function isAsked(): boolean {
  const { current } = view.peek();
  return tool.peek() === "calibrate" || (current !== null && !positionOf(record.peek(), current));
}

export class Pointing {
  private press: Press | null = null;
  private start: Point = [0, 0];
  private last: Point = [0, 0];
  private readonly fingers = new Map<number, Point>();
  private readonly drag = oncePerFrame((to: Point) => this.dragTo(to));

  constructor(private readonly element: HTMLElement) {}

  private at(event: MouseEvent): Point {
    const { left, top } = this.element.getBoundingClientRect();
    return [event.clientX - left, event.clientY - top];
  }

  readonly down = (event: PointerEvent): void => {
    const at = this.at(event);
    this.element.setPointerCapture(event.pointerId);
    this.fingers.set(event.pointerId, at);
    if (this.fingers.size === 2) return this.beginPinch();
    this.start = this.last = at;
    this.press = this.pressFor(event, at);
    if (event.pointerType === "touch") touching.value = this.press.kind === "point";
    this.pointAt(event, at);
  };

  private pressFor(event: PointerEvent, at: Point): Press {
    if (event.button === 2 || tool.peek() === "window") return { kind: "window", moved: false };
    if (event.button === 1 || event.altKey) return { kind: "pan", moved: false };
    const reach = event.pointerType === "touch" ? fingerReach : mouseReach;
    const grip = (place: Point): Point => {
      const [x, y] = toScreen(camera.peek(), place);
      return [x - at[0], y - at[1]];
    };
    if (tool.peek() === "calibrate") {
      const index = nearest(draftRuler.peek().entries(), at, reach);
      return index === null
        ? { kind: "point", moved: false }
        : { kind: "ruler end", index, grip: grip(draftRuler.peek()[index]!), moved: false };
    }
    const name = landmarkAt(at, reach);
    if (name !== null) {
      return { kind: "landmark", name, grip: grip(positionOf(record.peek(), name) ?? constructed.peek().get(name)!), moved: false };
    }
    return isAsked() ? { kind: "point", moved: false } : { kind: "pan", moved: false };
  }

  private beginPinch(): void {
    history.cancel();
    dragged.value = null;
    touching.value = false;
    this.press = { kind: "pinch" };
  }

  readonly move = (event: PointerEvent): void => {
    const at = this.at(event);
    if (this.press?.kind === "pinch") return this.pinch(event, at);
    if (this.fingers.has(event.pointerId)) this.fingers.set(event.pointerId, at);
    this.pointAt(event, at);
    const press = this.press;
    if (!press) {
      hovered.value = landmarkAt(at, mouseReach);
      return;
    }
    if (!press.moved) {
      if (Math.hypot(at[0] - this.start[0], at[1] - this.start[1]) < stillness) return;
      press.moved = true;
      if (press.kind === "point" && event.pointerType !== "touch") this.press = { kind: "pan", moved: true };
    }
    this.drag(at);
  };

  private pointAt(event: PointerEvent, at: Point): void {
    batch(() => {
      pointer.value = toFilm(camera.peek(), meant(event, at));
      keyboardCursor.value = null;
    });
  }

  private dragTo(to: Point): void {
    const press = this.press;
    const [dx, dy] = [to[0] - this.last[0], to[1] - this.last[1]];
    this.last = to;
    if (!press || press.kind === "pinch" || press.kind === "point") return;
    if (press.kind === "pan") return moveCamera(panned(camera.peek(), dx, dy));
    if (press.kind === "window") return film.peek() ? windowDragged(dx, dy) : undefined;
    const place = toFilm(camera.peek(), [to[0] + press.grip[0], to[1] + press.grip[1]]);
    if (press.kind === "ruler end") {
      draftRuler.value = draftRuler.peek().map((end, index) => (index === press.index ? place : end));
    } else {
      batch(() => {
        dragged.value = press.name;
        history.preview((now) => placed(now, press.name, snapped(place), landmarkNames.peek()));
      });
    }
  }

  readonly up = (event: PointerEvent): void => {
    const at = this.at(event);
    this.fingers.delete(event.pointerId);
    const press = this.press;
    if (this.fingers.size > 0) return;
    this.drag.flush();
    this.press = null;
    touching.value = false;
    const isTouch = event.pointerType === "touch";
    if (press?.kind === "point") this.putPoint(toFilm(camera.peek(), meant(event, at)));
    else if (press?.kind === "landmark") this.leaveLandmark(press, at, isTouch);
    else if (press?.kind === "pan" && !press.moved && event.button === 0) chooseLandmark(null);
    dragged.value = null;
    if (isTouch) pointer.value = null;
  };

  private putPoint(at: Point): void {
    const { current } = view.peek();
    if (tool.peek() === "calibrate") putRulerEnd(at);
    else if (current !== null) placeLandmark(current, snapped(at));
  }

  /** A click near a landmark chooses it, unless another is asked for and it is not the very same place. */
  private leaveLandmark(press: Press & { kind: "landmark" }, at: Point, isTouch: boolean): void {
    if (press.moved) {
      history.commit();
      return;
    }
    const isBeside = Math.hypot(...press.grip) > 3;
    if (isAsked() && isBeside && !isTouch) this.putPoint(toFilm(camera.peek(), at));
    else chooseLandmark(press.name);
  }

  readonly cancel = (event: PointerEvent): void => {
    this.fingers.delete(event.pointerId);
    this.press = null;
    history.cancel();
    batch(() => {
      dragged.value = null;
      touching.value = false;
      pointer.value = null;
    });
  };

  readonly leave = (): void => {
    if (this.press) return;
    pointer.value = null;
    hovered.value = null;
  };

  private pinch(event: PointerEvent, at: Point): void {
    const other = [...this.fingers].find(([id]) => id !== event.pointerId)?.[1];
    const before = this.fingers.get(event.pointerId);
    this.fingers.set(event.pointerId, at);
    if (!other || !before) return;
    const spread = (from: Point): number => Math.hypot(from[0] - other[0], from[1] - other[1]) || 1;
    const middle: Point = [(at[0] + other[0]) / 2, (at[1] + other[1]) / 2];
    moveCamera(panned(zoomed(camera.peek(), spread(at) / spread(before), middle), (at[0] - before[0]) / 2, (at[1] - before[1]) / 2));
  }

  readonly wheel = (event: WheelEvent): void => {
    event.preventDefault();
    const lines = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? 16 : 1;
    if (event.shiftKey) moveCamera(panned(camera.peek(), -event.deltaY * lines, 0));
    else moveCamera(zoomed(camera.peek(), Math.exp((-event.deltaY * lines) / 500), this.at(event)));
  };
}
