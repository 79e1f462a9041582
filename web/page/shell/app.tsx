import { useSignal } from "@preact/signals";
import { FilmView } from "../view/film_view.tsx";
import { announcement, film } from "../state/desk.ts";
import { placedNames } from "../state/measuring.ts";
import { Bar } from "./bar.tsx";
import { Dialogs } from "./dialogs.tsx";
import { FilmTools } from "./film_tools.tsx";
import { MeasuredCaption } from "./measured_caption.tsx";
import { Notice } from "./notice.tsx";
import { SidePanel } from "./side_panel.tsx";
import { StatusChips } from "./status_chips.tsx";
import { Welcome } from "./welcome.tsx";
import { openFiles } from "../files/open.ts";

export function App() {
  const isOver = useSignal(false);
  const isEmpty = film.value === null && placedNames.value.size === 0;
  return (
    <div
      class="app"
      onDragOver={(event) => {
        event.preventDefault();
        isOver.value = true;
      }}
      onDragLeave={() => (isOver.value = false)}
      onDrop={(event) => {
        event.preventDefault();
        isOver.value = false;
        void openFiles([...(event.dataTransfer?.files ?? [])]);
      }}
    >
      <Bar />
      <main class={isOver.value ? "desk drop-target" : "desk"}>
        <div class="stage">
          <FilmView />
          {isEmpty ? <Welcome /> : <FilmTools />}
          {!isEmpty && <StatusChips />}
          <MeasuredCaption />
        </div>
        <SidePanel />
      </main>
      <Notice />
      <p class="unseen" aria-live="polite">{announcement}</p>
      <Dialogs />
    </div>
  );
}
