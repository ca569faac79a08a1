(height, level, charging, low, lpm, color, base) {
  const segments = 8;
  const canvas = Object.assign(document.createElement('canvas'), { width: Math.round(height * 1.6), height });
  const ctx = canvas.getContext('2d');
  const [r, g, b] = color;
  const css = (alpha = 1) => `rgba(${r},${g},${b},${alpha})`;
  const tone = lpm ? '#ffcc00' : charging ? '#34c759' : low ? '#ff3b30' : css();
  const gap = Math.max(1, Math.round(height / 26));
  const segW = (canvas.width - gap * (segments - 1)) / segments;
  const lit = Math.ceil((level / 100) * segments);

  const heights = Array.from({ length: segments }, (_, i) => Math.round(height * (0.3 + 0.6 * (i + 1) / segments)));
  heights.forEach((h, i) => {
    const x = Math.round(i * (segW + gap));
    const w = Math.round((i + 1) * (segW + gap) - gap) - x;
    ctx.fillStyle = i < lit ? tone : `rgba(${base.slice(0, 3).join()},${base[3]})`;
    ctx.fillRect(x, height - h, w, h);
  });

  const label = `${level}${charging ? '+' : ''}`;
  const px = Math.round(height * 0.28);
  ctx.font = `bold ${px}px sans-serif`;
  ctx.fillStyle = css();
  ctx.textBaseline = 'top';
  ctx.fillText(label, 0, 0);
  const { width } = ctx.measureText(label);
  const dots = [...Array(3).keys()].map(k => ({ x: width + gap * 2 + k * px / 3, y: px / 2 }));
  for (const { x, y } of dots) {
    ctx.beginPath();
    ctx.arc(x, y, px / 10, 0, Math.PI * 2);
    ctx.fill();
  }
  return canvas.toDataURL('image/png');
}
