// Pictures on buttons: lines in a square of 20, drawn in the colour of the text.
const paths = {
  open: "M3 16V5h5l2 2h7v9z",
  save: "M10 3v9m-4-4 4 4 4-4M4 16h12",
  print: "M6 8V3h8v5M6 14H4V8h12v6h-2M6 12h8v5H6z",
  undo: "M7 4 3 8l4 4M3 8h8a5 5 0 0 1 0 10H8",
  redo: "M13 4l4 4-4 4M17 8H9a5 5 0 0 0 0 10h3",
  patients: "M10 9a3 3 0 1 0 0-6 3 3 0 0 0 0 6zM4 17c0-4 2.5-6 6-6s6 2 6 6",
  help: "M7.5 7.5a2.5 2.5 0 1 1 3.6 2.2c-.8.4-1.1 1-1.1 2M10 15v.2",
  plus: "M10 4v12M4 10h12",
  minus: "M4 10h12",
  fit: "M4 8V4h4M12 4h4v4M16 12v4h-4M8 16H4v-4",
  tone: "M10 3a7 7 0 1 0 0 14V3zM10 3a7 7 0 0 1 0 14",
  turn: "M15 6a6 6 0 1 0 1 5M15 2v4h-4",
  clockwise: "M15 6a6 6 0 1 0 1 5M15 2v4h-4",
  anticlockwise: "M5 6a6 6 0 1 1-1 5M5 2v4h4",
  mirror: "M10 3v14M8 6 3 14h5zM12 6l5 8h-5z",
  upside_down: "M3 10h14M6 8l8-5v5zM6 12l8 5v-5z",
  tracing: "M4 4c5-1 8 1 8 4s5 3 4 5-3 4-8 4",
  labels: "M4 6h12M10 6v10",
  ruler: "M3 13 13 3l4 4L7 17zM6 10l1.5 1.5M9 7l1.5 1.5M11.5 4.5 13 6",
  window: "M3 4h14v12H3zM3 16 17 4",
  snap: "M4 3h4v7a2 2 0 0 0 4 0V3h4v7a6 6 0 0 1-12 0zM4 6h4M12 6h4",
  invert: "M10 3a7 7 0 1 0 0 14zM10 3v14",
  previous: "M12 4l-6 6 6 6",
  next: "M8 4l6 6-6 6",
  close: "M5 5l10 10M15 5 5 15",
  check: "M4 10l4 4 8-9",
  moon: "M15 12a6 6 0 0 1-7-8 6.5 6.5 0 1 0 7 8z",
  warning: "M10 3 18 17H2zM10 8v4M10 14.5v.2",
} as const;

export type IconName = keyof typeof paths;

export function Icon({ name }: { name: IconName }) {
  return (
    <svg class="icon" viewBox="0 0 20 20" aria-hidden="true" focusable="false">
      <path d={paths[name]} />
    </svg>
  );
}
