(h, level, charging, low, lpm, color, base) {
  class Gauge {
    constructor(ctx, size) {
      this.ctx = ctx;
      this.size = size;
      this.centre = size / 2;
      this.radius = size * 0.4;
      this.width = Math.max(2, Math.round(size * 0.12));
    }
    arc(from, to, style) {
      const { ctx } = this;
      ctx.strokeStyle = style;
      ctx.lineWidth = this.width;
      ctx.lineCap = 'butt';
      ctx.beginPath();
      ctx.arc(this.centre, this.centre, this.radius, from, to);
      ctx.stroke();
    }
    ticks(count, style) {
      const { ctx } = this;
      ctx.strokeStyle = style;
      ctx.lineWidth = 1;
      for (let i = 0; i <= count; i++) {
        const angle = Math.PI * (0.8 + 1.4 * i / count);
        const inner = this.radius - this.width * 1.2;
        ctx.beginPath();
        ctx.moveTo(this.centre + Math.cos(angle) * inner, this.centre + Math.sin(angle) * inner);
        ctx.lineTo(this.centre + Math.cos(angle) * (inner - 2), this.centre + Math.sin(angle) * (inner - 2));
        ctx.stroke();
      }
    }
    label(text, style) {
      const { ctx } = this;
      ctx.fillStyle = style;
      ctx.font = `600 ${Math.round(this.size * 0.3)}px "Helvetica Neue", Arial, sans-serif`;
      ctx.textAlign = 'center';
      ctx.textBaseline = 'alphabetic';
      ctx.fillText(text, this.centre, this.centre + this.size * 0.11);
    }
  }

  const rgba = ([r, g, b], a = 1) => `rgba(${r}, ${g}, ${b}, ${a})`;
  const canvas = document.createElement('canvas');
  canvas.width = canvas.height = h;
  const gauge = new Gauge(canvas.getContext('2d'), h);
  const state = lpm ? [255, 204, 0] : charging ? [52, 199, 89] : low ? [255, 59, 48] : color;
  const start = Math.PI * 0.8, span = Math.PI * 1.4;

  gauge.arc(start, start + span, rgba(base, base[3]));
  gauge.arc(start, start + span * Math.min(level, 100) / 100, rgba(state));
  gauge.ticks(4, rgba(color, 0.6));
  gauge.label(`${level}`, rgba(color));
  return canvas.toDataURL('image/png');
}
