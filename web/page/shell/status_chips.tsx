import { computed } from "@preact/signals";
import { scaleWords } from "../calibrate/scale_panel.tsx";
import { panel } from "../parts/panel_choice.ts";
import { scale } from "../state/desk.ts";
import { camera } from "../view/stage.ts";
import { words } from "../words/words.ts";

const percent = computed(() => `${Math.round(100 * camera.value.zoom)} %`);

/** What of the film has to be in sight all the time. */
export function StatusChips() {
  return (
    <div class="chips">
      <button type="button" class={scale.value === null ? "chip warning" : "chip"} onClick={() => (panel.value = "scale")}>
        {scale.value === null ? words.value.noScaleShort : scaleWords(scale.value)}
      </button>
      <span class="chip">{percent}</span>
    </div>
  );
}
