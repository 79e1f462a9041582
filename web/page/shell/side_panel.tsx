import type { ComponentType } from "preact";
import { ScalePanel } from "../calibrate/scale_panel.tsx";
import { ComparePanel } from "../compare/compare_panel.tsx";
import { PatientPanel } from "../patient/patient_panel.tsx";
import { LandmarksPanel } from "../place/landmarks_panel.tsx";
import { BlindNotice } from "../readings/blind_notice.tsx";
import { ResultsPanel } from "../results/results_panel.tsx";
import { type Panel, panel, panels } from "../parts/panel_choice.ts";
import { words } from "../words/words.ts";

const contents: Readonly<Record<Panel, ComponentType>> = {
  patient: PatientPanel,
  scale: ScalePanel,
  landmarks: LandmarksPanel,
  results: ResultsPanel,
  compare: ComparePanel,
};

function walk(event: KeyboardEvent): void {
  const step = event.key === "ArrowRight" ? 1 : event.key === "ArrowLeft" ? -1 : 0;
  const next = panels[panels.indexOf(panel.value) + step];
  if (step === 0 || !next) return;
  panel.value = next;
  document.getElementById(`tab-${next}`)?.focus();
}

export function SidePanel() {
  const Content = contents[panel.value];
  return (
    <aside class="side-panel" aria-label={words.value.panelLabel}>
      <div class="tabs" role="tablist" aria-label={words.value.panelLabel} onKeyDown={walk}>
        {panels.map((name) => (
          <button
            key={name}
            id={`tab-${name}`}
            type="button"
            role="tab"
            aria-selected={panel.value === name}
            aria-controls="panel-content"
            tabIndex={panel.value === name ? 0 : -1}
            onClick={() => (panel.value = name)}
          >
            {words.value.panels[name]}
          </button>
        ))}
      </div>
      <div id="panel-content" class="panel-content" role="tabpanel" aria-labelledby={`tab-${panel.value}`} tabIndex={0}>
        <BlindNotice />
        <Content />
      </div>
    </aside>
  );
}
