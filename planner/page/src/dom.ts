// Small builders for the page's own windows.

/** An element with a class, and children or text. */
export function element<K extends keyof HTMLElementTagNameMap>(
  tag: K, className: string, ...children: (Node | string)[]
): HTMLElementTagNameMap[K] {
  const made = document.createElement(tag);
  if (className) made.className = className;
  made.append(...children);
  return made;
}

const kSvg = 'http://www.w3.org/2000/svg';

/** One of the drawings of icons.svg. */
export function icon(name: string): SVGSVGElement {
  const svg = document.createElementNS(kSvg, 'svg');
  svg.setAttribute('class', 'icon');
  svg.setAttribute('aria-hidden', 'true');
  const use = document.createElementNS(kSvg, 'use');
  use.setAttribute('href', `#icon-${name}`);
  svg.append(use);
  return svg;
}

/** A button with an icon; its name is its tool tip too. */
export function iconButton(iconName: string, label: string, pressed: () => void): HTMLButtonElement {
  const button = element('button', 'icon-button', icon(iconName));
  button.type = 'button';
  button.title = label;
  button.setAttribute('aria-label', label);
  button.addEventListener('click', pressed);
  return button;
}

/** A button with an icon and its name beside it. */
export function textButton(iconName: string, label: string, pressed: () => void): HTMLButtonElement {
  const button = element('button', 'text-button', icon(iconName), element('span', '', label));
  button.type = 'button';
  button.addEventListener('click', pressed);
  return button;
}
