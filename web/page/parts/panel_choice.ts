import { signal } from "@preact/signals";

export const panels = ["patient", "scale", "landmarks", "results", "compare"] as const;
export type Panel = (typeof panels)[number];

/** What the panel beside the film shows. */
export const panel = signal<Panel>("landmarks");
