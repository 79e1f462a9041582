// Work that is done once a frame, however often what it rests on changes.
import { effect } from "@preact/signals";

/** Runs `paint` now, and in the next frame after any signal that it read has changed. Gives what ends that. */
export function eachFrame(paint: () => void): () => void {
  let wanted = 0;
  let stop = (): void => {};
  const run = (): void => {
    wanted = 0;
    stop();
    let painted = false;
    stop = effect(() => {
      if (painted) {
        wanted ||= requestAnimationFrame(run); // having read nothing, the effect sleeps until then
      } else {
        painted = true;
        paint();
      }
    });
  };
  run();
  return () => {
    stop();
    cancelAnimationFrame(wanted);
  };
}

/** Of the calls in one frame the last one is made, as it ends. */
export function oncePerFrame<Arguments extends unknown[]>(call: (...args: Arguments) => void): {
  (...args: Arguments): void;
  /** Makes the call that waits. */
  flush(): void;
} {
  let waiting: Arguments | null = null;
  let wanted = 0;
  const flush = (): void => {
    cancelAnimationFrame(wanted);
    wanted = 0;
    const args = waiting;
    waiting = null;
    if (args) call(...args);
  };
  const later = (...args: Arguments): void => {
    waiting = args;
    wanted ||= requestAnimationFrame(flush);
  };
  return Object.assign(later, { flush });
}
