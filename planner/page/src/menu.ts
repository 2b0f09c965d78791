// The menu at a place of the map.

import type * as L from 'leaflet';
import { element, icon } from './dom';

export interface MenuItem {
  icon: string;
  label: string;
  run: () => void;
}

export class Menu {
  private readonly box = element('div', 'menu control');

  constructor(private readonly map: L.Map) {
    this.box.setAttribute('role', 'menu');
    this.box.hidden = true;
    this.box.addEventListener('keydown', (event) => this.key(event));
    this.box.addEventListener('focusout', (event) => {
      if (!this.box.contains(event.relatedTarget as Node | null)) this.box.hidden = true;
    });
    // The key that has opened it asks once more when it is let go.
    this.box.addEventListener('contextmenu', (event) => {
      event.preventDefault();
      event.stopPropagation();
    });
    for (const kind of ['pointerdown', 'mousedown', 'dblclick', 'wheel']) {
      this.box.addEventListener(kind, (event) => event.stopPropagation());
    }
    map.getContainer().append(this.box);
    map.on('movestart zoomstart', () => this.close());
  }

  get isOpen(): boolean {
    return !this.box.hidden;
  }

  open(place: L.Point, label: string, items: MenuItem[]): void {
    this.box.setAttribute('aria-label', label);
    this.box.replaceChildren(...items.map((item) => {
      const button = element('button', 'menu-item', icon(item.icon), element('span', '', item.label));
      button.type = 'button';
      button.setAttribute('role', 'menuitem');
      button.addEventListener('click', () => {
        this.close();
        item.run();
      });
      return button;
    }));
    this.box.hidden = false;
    const size = this.map.getSize();
    const left = Math.max(8, Math.min(place.x, size.x - this.box.offsetWidth - 8));
    const top = Math.max(8, Math.min(place.y, size.y - this.box.offsetHeight - 8));
    this.box.style.transform = `translate(${left}px, ${top}px)`;
    this.buttons()[0]?.focus();
  }

  close(): void {
    if (this.box.hidden) return;
    const hadFocus = this.box.contains(document.activeElement);
    this.box.hidden = true;
    if (hadFocus) this.map.getContainer().focus();
  }

  private buttons(): HTMLButtonElement[] {
    return [...this.box.querySelectorAll('button')];
  }

  private key(event: KeyboardEvent): void {
    event.stopPropagation();
    const buttons = this.buttons();
    const at = buttons.indexOf(document.activeElement as HTMLButtonElement);
    const steps: Record<string, number> = {
      ArrowDown: at + 1, ArrowUp: at - 1, Home: 0, End: buttons.length - 1,
    };
    const next = steps[event.key];
    if (next !== undefined) {
      event.preventDefault();
      buttons[(next + buttons.length) % buttons.length]?.focus();
    } else if (event.key === 'Escape' || event.key === 'Tab') {
      event.preventDefault();
      this.close();
    }
  }
}
