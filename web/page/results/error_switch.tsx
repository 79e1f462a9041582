import { words } from "../words/words.ts";
import { errorChoice, errorRemarks, showsErrors } from "./row_errors.ts";

/** Whether values have their standard errors beside them, and what those are. */
export function ErrorSwitch() {
  return (
    <div class="error-switch">
      <label class="choice">
        <input type="checkbox" checked={showsErrors.value} onChange={(event) => (errorChoice.value = event.currentTarget.checked ? "on" : "off")} />
        <span>{words.value.errorsOfValues}</span>
      </label>
      {errorRemarks.value.map((remark) => <p key={remark} class="quiet">{remark}</p>)}
    </div>
  );
}
