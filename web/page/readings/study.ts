// Films that were read twice, put together to a study.
import type { Analysis, Case, Kind, StudyFilm } from "../../engine/engine.js";
import { store } from "../files/keeping.ts";
import { usualAnalyses } from "../results/usual_analyses.ts";
import { chosenNames, folder, kind } from "../state/desk.ts";
import { completed } from "../state/measuring.ts";
import type { CaseId } from "../store/store.ts";
import { words } from "../words/words.ts";

export interface TwiceRead {
  readonly id: CaseId;
  readonly kind: Kind;
  /** "" where the readings can be compared. */
  readonly trouble: string;
  readonly film: StudyFilm & { readonly readings: readonly [Case, Case] };
}

/** All that are kept, each with its first reading and the latest finished one after that. */
export async function readTwice(): Promise<TwiceRead[]> {
  const now = store.peek();
  if (!now) return [];
  const found: TwiceRead[] = [];
  for (const { patient, cases } of await now.patients()) {
    for (const first of cases.filter(({ readingOf }) => readingOf === undefined)) {
      const others = cases.filter(({ readingOf }) => readingOf === first.id).sort((a, b) => b.changedAt - a.changedAt);
      for (const { id } of others) {
        const [one, other] = [await now.openCase(first.id), await now.openCase(id)].map((kept) => kept?.document);
        if (!one || !other || other.view.isBlind) continue;
        const isTurned = one.work.orientation.mirrored !== other.work.orientation.mirrored || one.work.orientation.quarters !== other.work.orientation.quarters;
        const scale = one.work.case.mm_per_pixel;
        const hasScale = scale !== undefined && scale === other.work.case.mm_per_pixel;
        found.push({
          id: first.id,
          kind: first.kind,
          trouble: isTurned ? words.peek().turnedOtherwise : hasScale ? "" : words.peek().unlikeScales,
          film: {
            name: [patient.name || words.peek().unnamed, first.filmDate].filter(Boolean).join(" · "),
            readings: [completed(one.work.case), completed(other.work.case)],
          },
        });
        break;
      }
    }
  }
  return found;
}

/** Those that are chosen on the desk, where that has the same kind of film. */
export function analysesFor(wanted: Kind): readonly Analysis[] {
  const all = folder.peek()?.analyses(wanted) ?? [];
  const names = kind.peek() === wanted ? chosenNames.peek() : usualAnalyses(all);
  return all.filter(({ name }) => names.includes(name));
}
