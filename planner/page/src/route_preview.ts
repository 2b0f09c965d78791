// Asks what way a dragged stop would make. The latest question counts: the answers to older ones
// are dropped.

import { ask, Leg, Position, program } from './external';
import type { PinRef } from './lists';

export class RoutePreview {
  private latest = 0;
  private isWaiting = false;
  private next: (() => void) | null = null;

  /** `moved`: the stop itself goes to `position`; otherwise a new one stands before it there. */
  request(ref: PinRef, position: Position, moved: boolean, answered: (leg: Leg | null) => void): void {
    const number = ++this.latest;
    const send = (): void => {
      this.isWaiting = true;
      const done = (leg: Leg | null): void => {
        this.isWaiting = false;
        if (number === this.latest) answered(leg);
        const next = this.next;
        this.next = null;
        next?.();
      };
      const isSent = ask(() => {
        program.GetRoutePreview(ref.list, ref.index, position, moved,
                                (status, leg) => done(status === 0 ? leg : null));
        return true;
      }, false);
      if (!isSent) done(null);
    };
    // One question at a time; of those that come meanwhile only the last is sent.
    if (this.isWaiting) this.next = send;
    else send();
  }

  /** No answer counts any more. */
  forget(): void {
    this.latest++;
    this.next = null;
  }
}
