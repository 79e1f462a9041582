import { signal } from "@preact/signals";

/** What is shown above the page. */
export const dialog = signal<"patients" | "study" | "help" | null>(null);
