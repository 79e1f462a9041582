import { render } from "preact";
import { PrintedReport } from "./printed_report.tsx";

/** Puts the report together when the browser begins to print, whoever asked for that, and takes it away again. */
export function watchPrinting(place: HTMLElement): void {
  addEventListener("beforeprint", () => render(<PrintedReport />, place));
  addEventListener("afterprint", () => render(null, place));
}
