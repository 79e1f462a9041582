// Work that is done once a frame, however often what it rests on changes: first calls, such as where a drag has come to,
// then paints, which so show in the same frame what the calls changed. What takes longer waits for the time that frames
// leave over.
import { effect } from "@preact/signals";

const calls = new Set<() => void>();
const paints = new Set<() => void>();
let wanted = 0;

function runAll(queue: Set<() => void>): void {
  const due = [...queue];
  queue.clear();
  for (const run of due) run();
}

function frame(): void {
  runAll(calls);
  runAll(paints);
  wanted = 0;
  if (calls.size + paints.size > 0) want();
}

function want(): void {
  wanted ||= requestAnimationFrame(frame);
}

/** Runs `paint` now, and in the frame in which any signal that it read has changed. Gives what ends that. */
export function eachFrame(paint: () => void): () => void {
  let stop = (): void => {};
  const run = (): void => {
    stop();
    let isPainted = false;
    stop = effect(() => {
      if (isPainted) {
        paints.add(run); // having read nothing, the effect sleeps until then
        want();
      } else {
        isPainted = true;
        paint();
      }
    });
  };
  run();
  return () => {
    stop();
    paints.delete(run);
  };
}

/** Of the calls in one frame the last one is made. */
export function oncePerFrame<Arguments extends unknown[]>(call: (...args: Arguments) => void): {
  (...args: Arguments): void;
  /** Makes the call that waits. */
  flush(): void;
} {
  let waiting: Arguments | null = null;
  const flush = (): void => {
    calls.delete(flush);
    const args = waiting;
    waiting = null;
    if (args) call(...args);
  };
  const later = (...args: Arguments): void => {
    waiting = args;
    calls.add(flush);
    want();
  };
  return Object.assign(later, { flush });
}

const pause = 80; // ms between two calls in spare time: often enough for what only follows the hand
const patience = 200; // ms until such a call is made even where no frame leaves time over

/** Gives what has `call` made soon, together with the paints that it asks for, between frames and where it fits in there. */
export function inSpareTime(call: () => void): () => void {
  let isWaiting = false;
  let took = 0;
  let last = -Infinity;
  let latest = 0;
  const run = (remaining: number): void => {
    const began = performance.now();
    if (remaining < took && began < latest) return wait();
    isWaiting = false;
    call();
    runAll(paints);
    last = performance.now();
    took = last - began;
  };
  const wait = (): void => {
    if (typeof requestIdleCallback === "undefined") setTimeout(run, 0, Infinity);
    else requestIdleCallback((spare) => run(spare.timeRemaining()), { timeout: Math.max(1, latest - performance.now()) });
  };
  return () => {
    if (isWaiting) return;
    isWaiting = true;
    const now = performance.now();
    const rest = Math.max(0, last + pause - now);
    latest = now + rest + patience;
    setTimeout(wait, rest);
  };
}
