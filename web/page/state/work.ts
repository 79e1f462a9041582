// What a person can do to a case: functions that give the changed work, or the same where there is nothing to change.
import type { Case, Kind, Point, ScaleOrigin, Work } from "./document.ts";
import { isVertebra } from "../place/vertebrae.ts";

type Group = "landmarks" | "user" | "vertebrae";

/** Where a case keeps a landmark: in the table of its kind, among the vertebrae, or as the person's own. */
function groupOf(record: Case, name: string, table: ReadonlySet<string>): Group {
  if (table.has(name)) return "landmarks";
  return record.kind === "lateral" && isVertebra(name) ? "vertebrae" : "user";
}

export function placed(work: Work, name: string, at: Point, table: ReadonlySet<string>): Work {
  const group = groupOf(work.case, name, table);
  return {
    ...work,
    case: { ...work.case, [group]: { ...work.case[group], [name]: at } },
    skipped: work.skipped.includes(name) ? work.skipped.filter((other) => other !== name) : work.skipped,
  };
}

export function removed(work: Work, name: string): Work {
  const without = (points: Record<string, Point>): Record<string, Point> =>
    Object.fromEntries(Object.entries(points).filter(([other]) => other !== name));
  const { landmarks, user, vertebrae } = work.case;
  if (!positionOf(work.case, name)) return work;
  return {
    ...work,
    case: {
      ...work.case,
      landmarks: without(landmarks),
      ...(user && { user: without(user) }),
      ...(vertebrae && { vertebrae: without(vertebrae) }),
    },
  };
}

export function skipped(work: Work, name: string): Work {
  return work.skipped.includes(name) ? work : { ...work, skipped: [...work.skipped, name] };
}

export function positionOf(record: Case, name: string): Point | undefined {
  return record.landmarks[name] ?? record.user?.[name] ?? record.vertebrae?.[name];
}

export function allPlaced(record: Case): [name: string, at: Point][] {
  return [...Object.entries(record.landmarks), ...Object.entries(record.user ?? {}), ...Object.entries(record.vertebrae ?? {})];
}

/** Facts of the patient and the film; one that is undefined is taken out. */
export function withFacts(work: Work, facts: { [Key in keyof Case]?: Case[Key] | undefined }): Work {
  const record = { ...work.case, ...facts } as Record<string, unknown>;
  for (const [key, value] of Object.entries(record)) if (value === undefined) delete record[key];
  return { ...work, case: record as unknown as Case };
}

export function scaled(work: Work, mmPerPixel: number | null, scale: ScaleOrigin | null): Work {
  return { ...withFacts(work, { mm_per_pixel: mmPerPixel ?? undefined }), scale: mmPerPixel === null ? null : scale };
}

export function choosing(work: Work, analyses: readonly string[]): Work {
  return { ...work, analyses };
}

/** Landmarks mean something else on a film of another kind. */
export function ofKind(work: Work, kind: Kind, analyses: readonly string[]): Work {
  if (kind === work.case.kind) return work;
  const { vertebrae: _vertebrae, outlines: _outlines, palate: _palate, ...record } = work.case;
  return { ...work, case: { ...record, kind, landmarks: {} }, skipped: [], analyses };
}
