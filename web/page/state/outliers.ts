// Landmarks that lie where the others do not expect them: probably slips.
import { computed } from "@preact/signals";
import { language } from "../words/words.ts";
import { askedInSpareTime } from "./measuring.ts";

export const outliers = askedInSpareTime((session) => session.outliers(language.value), []);

export const outlyingNames = computed<ReadonlySet<string>>(() => new Set(outliers.value.map(({ name }) => name)));
