import type { FilmPatient } from "../film/film.ts";
import type { Case } from "../state/document.ts";

/** "20250421" as "2025-04-21". */
function date(digits: string): string | undefined {
  const [, year, month, day] = /^(\d{4})(\d{2})(\d{2})$/.exec(digits) ?? [];
  return year && `${year}-${month}-${day}`;
}

/** What a film's header knows of the patient and the case does not. */
export function factsOfHeader(header: FilmPatient, known: Case): Partial<Case> {
  const told: { [Key in keyof Case]?: Case[Key] | undefined } = {
    name: header.name || undefined,
    sex: header.sex === "M" ? "male" : header.sex === "F" ? "female" : undefined,
    birth: date(header.birthDate),
    film: date(header.filmDate),
    side: header.laterality === "L" ? "left" : header.laterality === "R" ? "right" : undefined,
  };
  return Object.fromEntries(
    Object.entries(told).filter(([key, value]) => value !== undefined && known[key as keyof Case] === undefined),
  ) as Partial<Case>;
}
