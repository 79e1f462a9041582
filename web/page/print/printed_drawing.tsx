import { useLayoutEffect, useRef } from "preact/hooks";
import type { SvgPage } from "../../engine/engine.js";
import { words } from "../words/words.ts";

// What A4 and Letter both have within the margins of a page "drawing".
const roomMm = { width: 197, height: 266 };

/** At true size, or at the largest whole 5 % below it at which it fits. */
export function PrintedDrawing({ page, caption = "" }: { page: SvgPage; caption?: string }) {
  const place = useRef<HTMLDivElement>(null);
  const fitting = Math.min(1, roomMm.width / page.widthMm, roomMm.height / page.heightMm);
  const percent = fitting === 1 ? 100 : Math.floor(fitting * 20) * 5;
  useLayoutEffect(() => {
    const drawn = new DOMParser().parseFromString(page.svg, "image/svg+xml").documentElement;
    drawn.setAttribute("width", `${(page.widthMm * percent) / 100}mm`);
    drawn.setAttribute("height", `${(page.heightMm * percent) / 100}mm`);
    place.current?.replaceChildren(document.importNode(drawn, true));
  }, [page]);
  return (
    <figure class="print-drawing">
      <div ref={place} />
      <figcaption>{caption} {words.value.scaleOfPrint(percent)}</figcaption>
    </figure>
  );
}
