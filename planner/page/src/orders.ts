// What the user has the program do.

import { ask, program } from './external';
import { text } from './texts';

/** Style of the program's box: OK, and the sign of a warning. */
const kWarning = 48;

/** True when the program has done it; otherwise the user has been told why not. */
export function order(action: () => void): boolean {
  let reason: string | null = null;
  ask(action, undefined, (refusal) => {
    reason = refusal instanceof Error ? refusal.message : String(refusal);
  });
  if (reason === null) return true;
  const message = text('refused', reason);
  ask(() => program.MessageBox(message, kWarning), 0);
  return false;
}
