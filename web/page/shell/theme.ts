import { effect } from "@preact/signals";
import { remembered } from "../parts/remembered.ts";

export type Theme = "light" | "dark";

const systems: Theme = matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light";
export const theme = remembered<Theme>("theme", systems, (value) => value === "light" || value === "dark");

effect(() => {
  document.documentElement.dataset["theme"] = theme.value;
});
