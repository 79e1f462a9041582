// What the tracing shows of the case as it stands.
import { computed, signal } from "@preact/signals";
import type { Case, DisplayMode, Registration, Tracing, TracingOptions } from "../../engine/engine.js";
import { folder, kind, scale, view } from "../state/desk.ts";
import { askedBehind } from "../state/measuring.ts";
import { errorWords } from "../words/words.ts";

export const modesOfKind = computed<readonly DisplayMode[]>(() => folder.value?.modes(kind.value) ?? []);

/** What the engine can't draw is not there; why, its messages say elsewhere. */
function orNone<Made>(make: () => Made): Made | null {
  try {
    return make();
  } catch {
    return null;
  }
}

/** Of the first display mode that is shown. */
export const tracingOptions = computed<TracingOptions>(() => {
  const { outlines, modes } = view.value;
  const mode = modesOfKind.value.find(({ name }) => modes.includes(name));
  return { ...(folder.value && { folder: folder.value }), ...(mode && { mode }), outlines: outlines ? "case" : "none" };
});

/** The first one with outlines, one for each display mode. Empty without a scale: outlines are fitted in millimetres. */
export const tracings = askedBehind<Tracing[]>((session) => {
  const { tracing, outlines, modes } = view.value;
  if (!tracing || scale.value === null) return [];
  const chosen = modesOfKind.value.filter((mode) => modes.includes(mode.name));
  const rest = folder.value ? { folder: folder.value } : {};
  const all = (chosen.length > 0 ? chosen : [null]).map((mode, index) =>
    orNone(() => session.tracing({ ...rest, mode, outlines: outlines && index === 0 ? "case" : "none" })),
  );
  return all.flatMap((made) => (made ? [made] : []));
}, []);

/** An earlier film of the patient that is laid over this one. */
export const earlier = signal<Case | null>(null);
export const registration = signal<Registration>("cranial-base");

const comparison = askedBehind<{ tracing: Tracing | null; error: string }>((session) => {
  if (!earlier.value) return { tracing: null, error: "" };
  try {
    return { tracing: session.superimpose(earlier.value, registration.value, { mode: null, outlines: "case" }), error: "" };
  } catch (error) {
    return { tracing: null, error: errorWords(error) };
  }
}, { tracing: null, error: "" });

export const superimposed = computed(() => comparison.value.tracing);
export const superimpositionError = computed(() => comparison.value.error);
