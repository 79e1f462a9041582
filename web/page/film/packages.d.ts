// The faces of packages that come without: the WebAssembly codecs of the cornerstonejs project, and lossless JPEG.
declare module "@cornerstonejs/codec-charls/decodewasmjs" {
  interface FrameInfo {
    readonly width: number;
    readonly height: number;
    readonly bitsPerSample: number;
    readonly componentCount: number;
  }
  export interface CodecDecoder {
    /** Room for the compressed bytes. */
    getEncodedBuffer(size: number): Uint8Array;
    decode(): void;
    /** In the module's memory, until `delete`. */
    getDecodedBuffer(): Uint8Array;
    getFrameInfo(): FrameInfo;
    /** JPEG-LS: 0 colours one behind the other, else side by side. */
    getInterleaveMode?(): number;
    delete(): void;
  }
  type MakeDecoder = new () => CodecDecoder;
  export interface CodecModule {
    readonly JPEGDecoder: MakeDecoder;
    readonly JpegLSDecoder: MakeDecoder;
    readonly J2KDecoder: MakeDecoder;
  }
  const load: (options: { wasmBinary: Uint8Array; print: () => void; printErr: () => void }) => Promise<CodecModule>;
  export default load;
}

declare module "@cornerstonejs/codec-libjpeg-turbo-8bit/decodewasmjs" {
  export { default } from "@cornerstonejs/codec-charls/decodewasmjs";
}

declare module "@cornerstonejs/codec-openjpeg/decodewasmjs" {
  export { default } from "@cornerstonejs/codec-charls/decodewasmjs";
}

declare module "jpeg-lossless-decoder-js" {
  export class Decoder {
    decode(buffer: ArrayBuffer, offset: number, length: number, bytesOfSample: number): Uint8Array | Uint16Array;
    /** The first row that was not reached. */
    readonly yLoc: number;
  }
}
