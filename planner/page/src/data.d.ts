// Data files arrive in the bundle as bytes.
declare module '*.bin' {
  const bytes: Uint8Array;
  export default bytes;
}
