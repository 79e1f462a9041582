// Pictures unpacked by libjpeg-turbo, CharLS and OpenJPEG, as WebAssembly that lies in the page itself. Each film gets a
// module of its own, so that its memory goes with it and a damaged film leaves nothing behind.
import charls from "@cornerstonejs/codec-charls/decodewasmjs";
import charlsWasm from "@cornerstonejs/codec-charls/decodewasm?url&inline";
import libjpeg from "@cornerstonejs/codec-libjpeg-turbo-8bit/decodewasmjs";
import libjpegWasm from "@cornerstonejs/codec-libjpeg-turbo-8bit/decodewasm?url&inline";
import openjpeg from "@cornerstonejs/codec-openjpeg/decodewasmjs";
import openjpegWasm from "@cornerstonejs/codec-openjpeg/decodewasm?url&inline";
import type { CodecDecoder, CodecModule } from "@cornerstonejs/codec-charls/decodewasmjs";

/** Samples side by side, rows from the top; 16 bits each, the low byte first, where they have more than 8. */
export interface UnpackedPicture {
  readonly width: number;
  readonly height: number;
  readonly channels: number;
  readonly bits: number;
  readonly planes: boolean;
  readonly bytes: Uint8Array;
}

type Load = typeof charls;

interface Codec {
  readonly load: Load;
  readonly wasm: string;
  readonly make: (module: CodecModule) => CodecDecoder;
}

const codecs = {
  jpeg: { load: libjpeg, wasm: libjpegWasm, make: (module) => new module.JPEGDecoder() },
  jpegLs: { load: charls, wasm: charlsWasm, make: (module) => new module.JpegLSDecoder() },
  jpeg2000: { load: openjpeg, wasm: openjpegWasm, make: (module) => new module.J2KDecoder() },
} satisfies Record<string, Codec>;

export type CodecName = keyof typeof codecs;

/** The bytes of "data:application/wasm;base64,...", which the page's policy forbids to fetch. */
function bytesOfDataUrl(url: string): Uint8Array {
  const letters = atob(url.slice(url.indexOf(",") + 1));
  const bytes = new Uint8Array(letters.length);
  for (let i = 0; i < bytes.length; ++i) bytes[i] = letters.charCodeAt(i);
  return bytes;
}

/** A codec at work, for as many pictures as one file has. */
export type Unpack = (packed: Uint8Array) => UnpackedPicture;

/** What it gives throws, anything, when a picture is damaged. Whoever calls has checked its size. */
export async function codec(name: CodecName): Promise<Unpack> {
  const { load, wasm, make }: Codec = codecs[name];
  const quiet = (): void => {};
  const module = await load({ wasmBinary: bytesOfDataUrl(wasm), print: quiet, printErr: quiet });
  return (packed) => {
    const decoder = make(module);
    try {
      decoder.getEncodedBuffer(packed.length).set(packed);
      decoder.decode();
      const info = decoder.getFrameInfo();
      return {
        width: info.width,
        height: info.height,
        channels: info.componentCount,
        bits: info.bitsPerSample,
        planes: decoder.getInterleaveMode?.() === 0 && info.componentCount > 1,
        bytes: new Uint8Array(decoder.getDecodedBuffer()), // a copy
      };
    } finally {
      decoder.delete();
    }
  };
}
