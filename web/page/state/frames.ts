// Work that is done once a frame, however often what it rests on changes: first calls, such as where a drag has come to,
// then paints, which so show in the same frame what the calls changed; behind the frame what may be shown by the next.
import { effect } from "@preact/signals";

const calls = new Set<() => void>();
const paints = new Set<() => void>();
const behind = new Set<() => void>();
let wanted = 0;
const { port1: painted, port2: end } = new MessageChannel();

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
  if (behind.size > 0) end.postMessage(null);
}

painted.onmessage = () => runAll(behind);

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

/** Calls once, when the next frame has been painted. */
export function behindFrame(call: () => void): void {
  behind.add(call);
  want();
}
