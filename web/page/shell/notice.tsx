import { IconButton } from "../parts/icon_button.tsx";
import { notice, words } from "../words/words.ts";

export function Notice() {
  const now = notice.value;
  return (
    <div class="notice-place" role={now?.isError ? "alert" : "status"}>
      {now && (
        <div class={now.isError ? "notice error" : "notice"}>
          <p>{now.text}</p>
          <IconButton icon="close" label={words.value.close} onClick={() => (notice.value = null)} />
        </div>
      )}
    </div>
  );
}
