// Keeps the engine's session in step with the case, and the numbers that follow from it.
import { type ReadonlySignal, computed, effect, signal } from "@preact/signals";
import type { Case, LandmarkInfo, Numbers, Row, Session } from "../../engine/engine.js";
import { chosenAnalyses, engine, history, kind, landmarkTable, record } from "./desk.ts";
import type { Point } from "./document.ts";
import { inSpareTime } from "./frames.ts";
import { allPlaced, positionOf } from "./work.ts";
import { language, sayError } from "../words/words.ts";

/** Numbers of all rows, kept apart from the engine's memory. */
export type RowNumbers = { -readonly [Key in keyof Numbers]: Numbers[Key] };

const none: RowNumbers = {
  value: new Float64Array(),
  mean: new Float64Array(),
  sd: new Float64Array(),
  deviation: new Float64Array(),
  state: new Uint8Array(),
};

/** null until the engine is ready. */
export const session = signal<Session | null>(null);
export const rows = signal<readonly Row[]>([]);
export const neededLandmarks = signal<readonly string[]>([]);
/** Replaced whenever anything that is measured may have changed. */
export const numbers = signal<RowNumbers>(none);

/** Landmarks that others determine, where they lie now. A person who places one himself goes before its construction. */
export const constructed = signal<ReadonlyMap<string, Point>>(new Map());

/** Other points that are constructed: the case's virtual ones, and those of formulas. Shown, not saved. */
export const shownPoints = signal<ReadonlyMap<string, Point>>(new Map());

let inSession: Case | null = null;

function sameBut(record: Case, other: Case): boolean {
  const points = new Set(["landmarks", "user", "vertebrae"]);
  const keys = new Set([...Object.keys(record), ...Object.keys(other)]) as Set<keyof Case>;
  return [...keys].every((key) => points.has(key) || record[key] === other[key]);
}

/** A moved landmark is told alone, since a case in JSON takes longer than a frame of a drag has. */
function tell(to: Session, now: Case): void {
  if (inSession === now) return;
  if (inSession === null || !sameBut(inSession, now)) {
    to.setRecord(now);
  } else {
    const before = new Map(allPlaced(inSession));
    for (const [name, at] of allPlaced(now)) {
      if (before.get(name) !== at) to.place(name, at[0], at[1]);
      before.delete(name);
    }
    for (const name of before.keys()) to.remove(name);
  }
  inSession = now;
}

function copied({ value, mean, sd, deviation, state }: Numbers): RowNumbers {
  return { value: value.slice(), mean: mean.slice(), sd: sd.slice(), deviation: deviation.slice(), state: state.slice() };
}

/** Places in the session, not in the case, what can be constructed; one may rest on another. */
export function construct(to: Session, now: Case, infos: readonly LandmarkInfo[]): Map<string, Point> {
  const made = new Map<string, Point>();
  let waiting = infos.filter((info) => info.construction && !now.landmarks[info.name]);
  for (const { name } of waiting) to.remove(name);
  for (;;) {
    const before = waiting.length;
    waiting = waiting.filter(({ name, construction }) => {
      const known = construction!.from.every((from) => now.landmarks[from] || now.user?.[from] || made.has(from));
      const at = known ? to.construct(construction!.expression) : null;
      if (!at) return true;
      to.place(name, at.x, at.y);
      made.set(name, [at.x, at.y]);
      return false;
    });
    if (waiting.length === before) return made;
  }
}

/** The case with what can be constructed in it. */
export function completed(record: Case): Case {
  const apart = engine.peek()!.measure(record);
  try {
    return { ...record, landmarks: { ...record.landmarks, ...Object.fromEntries(construct(apart, record, engine.peek()!.landmarks(record.kind))) } };
  } finally {
    apart.delete();
  }
}

/** An expression's landmarks are placed or constructed: the library takes (0, 0) for others. */
function hasAll(expression: string, isKnown: (name: string) => boolean): boolean {
  return [...expression.matchAll(/\[([^\]]*)\]/g)].every(([, name]) => isKnown(name ?? ""));
}

function pointsToShow(of: Session, now: Case, made: ReadonlyMap<string, Point>): Map<string, Point> {
  const found = new Map<string, Point>();
  const ofFormulas = engine.peek()?.formulaPoints(now.kind).map(({ name, expression }) => [name, expression] as const) ?? [];
  for (const [name, expression] of new Map([...ofFormulas, ...Object.entries(now.virtual ?? {})])) {
    const isKnown = (from: string): boolean => positionOf(now, from) !== undefined || made.has(from) || found.has(from);
    const at = !positionOf(now, name) && hasAll(expression, isKnown) ? of.construct(expression) : null;
    if (at) found.set(name, [at.x, at.y]);
  }
  return found;
}

effect(() => {
  const made = engine.value?.measure({ format: "cephtool-case", version: 1, kind: kind.value, landmarks: {} }) ?? null;
  inSession = null;
  session.value = made;
  return () => {
    session.value = null;
    made?.delete();
  };
});

effect(() => {
  const measured = session.value;
  if (!measured) return;
  measured.choose(chosenAnalyses.value.filter((analysis) => analysis.caseKind === kind.peek()));
  rows.value = measured.rows;
  neededLandmarks.value = measured.neededLandmarks;
});

effect(() => {
  const measured = session.value;
  const now = record.value;
  const infos = landmarkTable.value;
  void rows.value;
  if (!measured || now.kind !== kind.peek()) return;
  try {
    tell(measured, now);
    constructed.value = construct(measured, now, infos);
    shownPoints.value = pointsToShow(measured, now, constructed.peek());
    numbers.value = copied(measured.measure());
  } catch (error) {
    sayError(error); // what was measured last stands
  }
});

/** What the session knows of the case as it stands; asked anew after every change. */
export function asked<Answer>(ask: (session: Session) => Answer, otherwise: Answer) {
  return computed(() => {
    void numbers.value;
    return session.value ? ask(session.value) : otherwise;
  });
}

/** The same for what takes longer than a frame of a drag has: it then follows in the time that frames leave over. */
export function askedBehind<Answer>(ask: (session: Session) => Answer, otherwise: Answer): ReadonlySignal<Answer> {
  const now = asked(ask, otherwise);
  const last = signal(otherwise);
  const follow = inSpareTime(() => {
    last.value = now.peek();
  });
  effect(() => {
    void numbers.value;
    if (history.isStepping.value) follow();
    else last.value = now.value;
  });
  return last;
}

/** The same for what always waits for that time. */
export function askedInSpareTime<Answer>(ask: (session: Session) => Answer, otherwise: Answer): ReadonlySignal<Answer> {
  const last = signal(otherwise);
  const follow = inSpareTime(() => {
    const found = session.peek() ? ask(session.peek()!) : otherwise;
    if (JSON.stringify(found) !== JSON.stringify(last.peek())) last.value = found;
  });
  effect(() => {
    void numbers.value;
    void language.value;
    void session.value;
    follow();
  });
  return last;
}

/** The same for what takes a while and can wait until a drag has come to its end. */
export function askedAtRest<Answer>(ask: (session: Session) => Answer, otherwise: Answer) {
  let last = otherwise;
  return computed(() => {
    if (history.isStepping.value) return last;
    void numbers.value;
    last = session.value ? ask(session.value) : otherwise;
    return last;
  });
}

/** A set that stays the same one as long as it has the same members: moving a landmark does not change it. */
function steady(names: () => Iterable<string>) {
  const key = computed(() => [...names()].join("\n"));
  return computed<ReadonlySet<string>>(() => new Set(key.value === "" ? [] : key.value.split("\n")));
}
export const placedNames = steady(() => allPlaced(record.value).map(([name]) => name));
export const constructedNames = steady(() => constructed.value.keys());
