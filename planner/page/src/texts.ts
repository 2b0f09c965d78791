// The texts of the page, in the program's language; the program has them all.

import { ask, program } from './external';

let texts: Record<string, string> = {};

export function loadTexts(): void {
  texts = ask(() => JSON.parse(program.GetTexts()) as Record<string, string>, {});
}

/** The text of a name with its placeholders %s and %d filled in their order. */
export function text(name: string, ...values: (string | number)[]): string {
  let next = 0;
  return (texts[name] ?? name).replace(/%[sd%]/g, (placeholder) =>
    placeholder === '%%' ? '%' : String(values[next++] ?? ''));
}

export function language(): string {
  return document.documentElement.lang || 'en';
}

const kMetresPerMile = 1609.344;
const kMetresPerYard = 0.9144;

/** A distance in metres for the user. */
export function distanceText(metres: number, miles: boolean): string {
  const [small, large, name, largeName] = miles
    ? [kMetresPerYard, kMetresPerMile, 'yd', 'mi'] : [1, 1000, 'm', 'km'];
  if (metres < 1000 * small) return `${Math.round(metres / small)} ${name}`;
  const amount = metres / large;
  const digits = amount < 100 ? 1 : 0;
  const number = new Intl.NumberFormat(language(), {
    minimumFractionDigits: digits, maximumFractionDigits: digits,
  });
  return `${number.format(amount)} ${largeName}`;
}

/** A duration in seconds as hours and minutes. */
export function durationText(seconds: number): string {
  const minutes = Math.floor(seconds / 60);
  return `${String(Math.floor(minutes / 60)).padStart(2, '0')}:${String(minutes % 60).padStart(2, '0')}`;
}
