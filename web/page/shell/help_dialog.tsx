import { useRef } from "preact/hooks";
import { openAnalyses } from "../files/open.ts";
import { Dialog } from "../parts/dialog.tsx";
import { engine, folder } from "../state/desk.ts";
import { words } from "../words/words.ts";

function ClinicAnalyses() {
  const t = words.value;
  const file = useRef<HTMLInputElement>(null);
  const whole = useRef<HTMLInputElement>(null);
  const problems = folder.value?.problems ?? [];
  const pick = (event: Event): void => void openAnalyses([...((event.currentTarget as HTMLInputElement).files ?? [])]);
  return (
    <section>
      <h3>{t.clinicAnalyses}</h3>
      <p class="quiet">{t.clinicAnalysesHow}</p>
      <div class="buttons">
        <button type="button" onClick={() => file.current?.click()}>{t.openDefinition}</button>
        <button type="button" onClick={() => whole.current?.click()}>{t.openFolder}</button>
        <button type="button" onClick={() => (folder.value = engine.peek()?.shippedFolder() ?? null)}>{t.shippedAnalyses}</button>
      </div>
      <input ref={file} class="unseen" type="file" accept=".txt" tabIndex={-1} aria-label={t.openDefinition} onChange={pick} />
      <input ref={whole} class="unseen" type="file" {...{ webkitdirectory: true }} tabIndex={-1} aria-label={t.openFolder} onChange={pick} />
      <ul class="problems" lang="en">
        {problems.map((problem, index) => (
          <li key={index} class={problem.note ? "quiet" : "remark warning"}>
            <code>{problem.file}:{problem.line}:{problem.column}</code> {problem.message}
          </li>
        ))}
      </ul>
    </section>
  );
}

export function HelpDialog({ onClose }: { onClose: () => void }) {
  const t = words.value;
  return (
    <Dialog title={t.help} onClose={onClose}>
      <h3>{t.keysTitle}</h3>
      <dl class="keys">
        {t.keys.map(([key, meaning]) => (
          <div key={key}>
            <dt><kbd>{key}</kbd></dt>
            <dd>{meaning}</dd>
          </div>
        ))}
      </dl>
      <h3>{t.pointerTitle}</h3>
      <ul>{t.pointerHelp.map((line) => <li key={line}>{line}</li>)}</ul>
      <ClinicAnalyses />
      <p class="quiet">{t.noDiagnosis}</p>
    </Dialog>
  );
}
