// Everything that the store holds as one file: a line of JSON, which says what there is, and behind it the films' files, one
// after the other. So it can be of any size, and any language reads it in a few lines.
import type { CaseEntry, FilmId, Patient, StoredCase } from "./store.ts";
import { StoreError } from "./store.ts";

const format = "digitiser-archive";
const version = 1;
const longestLine = 512 * 1024 * 1024;

export interface ArchivedFilm {
  readonly id: FilmId;
  readonly name: string;
  readonly type: string;
  readonly file: Blob;
}

export interface Archive {
  readonly patients: readonly Patient[];
  readonly cases: readonly StoredCase<unknown>[];
  readonly films: readonly ArchivedFilm[];
}

/** Films are known by their content: SHA-256 in hexadecimal digits. */
export async function filmIdOf(file: Blob): Promise<FilmId> {
  const digest = await crypto.subtle.digest("SHA-256", await file.arrayBuffer());
  return Array.from(new Uint8Array(digest), (byte) => byte.toString(16).padStart(2, "0")).join("");
}

export function archiveFile({ patients, cases, films }: Archive): Blob {
  const listed = films.map(({ id, name, type, file }) => ({ id, name, type, bytes: file.size }));
  const line = JSON.stringify({ format, version, patients, cases, films: listed });
  return new Blob([line, "\n", ...films.map((film) => film.file)], { type: "application/octet-stream" });
}

function damaged(what: string): StoreError {
  return new StoreError("damaged", what);
}

type Json = Readonly<Record<string, unknown>>;

function isObject(value: unknown): value is Json {
  return typeof value === "object" && value !== null && !Array.isArray(value);
}

function hasTexts(value: unknown, ...names: readonly string[]): value is Json {
  return isObject(value) && names.every((name) => typeof value[name] === "string");
}

function isPatient(value: unknown): value is Patient {
  return hasTexts(value, "id", "name", "number", "sex", "birthDate") && ["", "male", "female"].includes(String(value["sex"]));
}

function isEntry(value: unknown): value is CaseEntry {
  return (
    hasTexts(value, "id", "patient", "kind", "filmDate") &&
    ["lateral", "frontal", "model"].includes(String(value["kind"])) &&
    (value["film"] === null || typeof value["film"] === "string") &&
    (value["readingOf"] === undefined || typeof value["readingOf"] === "string") &&
    Number.isFinite(value["landmarkCount"]) &&
    Number.isFinite(value["changedAt"])
  );
}

function isCase(value: unknown): value is StoredCase<unknown> {
  return isObject(value) && isEntry(value["entry"]) && Number.isInteger(value["revision"]) && "document" in value;
}

interface ListedFilm {
  readonly id: string;
  readonly name: string;
  readonly type: string;
  readonly bytes: number;
}

function isListedFilm(value: unknown): value is ListedFilm {
  return hasTexts(value, "id", "name", "type") && Number.isInteger(value["bytes"]) && Number(value["bytes"]) >= 0;
}

/** A list of the first line, each entry checked. */
function listOf<Entry>(line: Json, name: string, isOne: (value: unknown) => value is Entry): readonly Entry[] {
  const list = line[name];
  if (!Array.isArray(list)) throw damaged(`${name} are missing`);
  return list.map((value: unknown, i) => {
    if (!isOne(value)) throw damaged(`${name}, entry ${i + 1}`);
    return value;
  });
}

async function firstLine(file: Blob): Promise<{ line: string; bytes: number }> {
  const newline = 10;
  const pieces: Blob[] = [];
  for (let at = 0; at < Math.min(file.size, longestLine); ) {
    const piece = file.slice(at, at + 1024 * 1024);
    const end = new Uint8Array(await piece.arrayBuffer()).indexOf(newline);
    pieces.push(end < 0 ? piece : piece.slice(0, end));
    at += end < 0 ? piece.size : end + 1;
    if (end >= 0) return { line: await new Blob(pieces).text(), bytes: at };
  }
  throw damaged("it has no first line");
}

/** Throws StoreError ("damaged") that names the place. Every film is held against its name, which is its content's. */
export async function readArchive(file: Blob): Promise<Archive> {
  const { line, bytes } = await firstLine(file);
  let read: unknown;
  try {
    read = JSON.parse(line);
  } catch {
    throw damaged("its first line is no JSON");
  }
  if (!isObject(read) || read["format"] !== format) throw damaged("it is of another format");
  if (read["version"] !== version) throw damaged(`it is of version ${String(read["version"])}, and ${version} is read`);
  const patients = listOf(read, "patients", isPatient);
  const cases = listOf(read, "cases", isCase);
  const listed = listOf(read, "films", isListedFilm);
  const known = new Set(patients.map((patient) => patient.id));
  const orphan = cases.findIndex(({ entry }) => !known.has(entry.patient));
  if (orphan >= 0) throw damaged(`cases, entry ${orphan + 1}: its patient is missing`);
  const films: ArchivedFilm[] = [];
  let at = bytes;
  for (const { id, name, type, bytes: size } of listed) {
    const film = file.slice(at, at + size, type);
    if (film.size !== size || (await filmIdOf(film)) !== id) throw damaged(`film ${name}, at byte ${at}`);
    films.push({ id, name, type, file: film });
    at += size;
  }
  if (at !== file.size) throw damaged(`${file.size - at} bytes too many, at byte ${at}`);
  return { patients, cases, films };
}
