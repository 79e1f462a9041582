import { Choice } from "../parts/choice.tsx";
import { beginGuide } from "../place/guide.ts";
import { usualAnalyses } from "../results/usual_analyses.ts";
import { folder, history, kind } from "../state/desk.ts";
import type { Kind } from "../state/document.ts";
import { ofKind } from "../state/work.ts";
import { words } from "../words/words.ts";

function takeKind(next: Kind | undefined): void {
  if (!next || next === kind.peek()) return;
  const analyses = usualAnalyses(folder.peek()?.analyses(next) ?? []);
  history.change((now) => ofKind(now, next, analyses));
  history.look({ current: null, modes: [] });
  beginGuide();
}

/** What the film shows; landmarks of another kind are given up, which undo takes back. */
export function KindChoice() {
  const t = words.value;
  return (
    <Choice<Kind>
      label={t.kind}
      value={kind.value}
      options={[["lateral", t.kinds.lateral], ["frontal", t.kinds.frontal], ["model", t.kinds.model]]}
      onChange={takeKind}
    />
  );
}
