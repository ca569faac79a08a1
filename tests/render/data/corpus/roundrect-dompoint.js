(height, level, charging, low, colour) {
  const canvas = document.createElement('canvas');
  const ctx = canvas.getContext('2d');
  const h = Math.round(height * 0.6);
  const w = Math.round(h * 1.9);
  canvas.width = w + Math.round(h / 5);
  canvas.height = height;
  const y = Math.round((height - h) / 2);
  const rgb = colour.join(', ');

  // Outline: elliptical corners given as DOMPoint and plain {x, y} objects.
  ctx.beginPath();
  ctx.roundRect(0, y, w, h, [new DOMPoint(h * 0.35, h * 0.25), { x: h * 0.2, y: h * 0.45 }, h * 0.3, 0]);
  ctx.lineWidth = Math.max(1, Math.round(height / 25));
  ctx.strokeStyle = `rgba(${rgb}, 0.5)`;
  ctx.stroke();

  // Fill: a single radius, then a negative width drawn from the right edge back.
  const inset = ctx.lineWidth * 2;
  const fillW = (w - inset * 2) * Math.max(0, Math.min(level, 100)) / 100;
  ctx.fillStyle = low ? 'rgb(255, 59, 48)' : charging ? 'rgb(52, 199, 89)' : `rgb(${rgb})`;
  ctx.beginPath();
  ctx.roundRect(inset, y + inset, fillW, h - inset * 2, Math.max(0, Math.min(fillW / 2, h / 6)));
  ctx.fill();

  ctx.beginPath();
  ctx.roundRect(canvas.width, y + h / 3, -Math.round(h / 8), h / 3, [h / 10]);
  ctx.roundRect(w - inset, y + inset, -inset, inset, [0]);
  ctx.fillStyle = `rgb(${rgb})`;
  ctx.fill();
  return canvas.toDataURL('image/png');
}
