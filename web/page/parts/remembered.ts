import { type Signal, effect, signal } from "@preact/signals";

/** A choice that stays after the page is closed, where the browser lets it; what it kept is checked. */
export function remembered<Value extends string>(key: string, first: Value, isValid: (value: string) => boolean): Signal<Value> {
  const kept = read(key);
  const choice = signal(kept !== null && isValid(kept) ? (kept as Value) : first);
  effect(() => write(key, choice.value));
  return choice;
}

function read(key: string): string | null {
  try {
    return localStorage.getItem(`digitiser.${key}`);
  } catch {
    return null;
  }
}

function write(key: string, value: string): void {
  try {
    localStorage.setItem(`digitiser.${key}`, value);
  } catch {
    // Without storage the choice holds until the page is closed.
  }
}
