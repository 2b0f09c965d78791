/** Reads the numbers of the packed map data: seven bits a byte, the lowest first. */
export class PackedNumbers {
  private position = 0;

  constructor(private readonly bytes: Uint8Array) {}

  whole(): number {
    let value = 0;
    for (let shift = 1; ; shift *= 128) {
      const byte = this.bytes[this.position++] ?? 0;
      value += (byte & 127) * shift;
      if (byte < 128) return value;
    }
  }

  signed(): number {
    const value = this.whole();
    return value % 2 === 0 ? value / 2 : -(value + 1) / 2;
  }

  /** Text of so many bytes in UTF-8. */
  text(length: number): string {
    const start = this.position;
    this.position += length;
    return new TextDecoder().decode(this.bytes.subarray(start, this.position));
  }
}
