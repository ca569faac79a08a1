(height, level, charging, low, rgb) {
  // Amp Cells: five cells in a thin case, one per fifth of charge; while charging the next
  // cell glows faintly.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var bodyH = Math.round(height * 0.56);
  var bodyW = Math.round(bodyH * 2.1);
  var line = Math.max(2, Math.round(height / 26));
  var gap = Math.max(1, Math.round(height / 30));
  var capW = Math.max(2, Math.round(bodyH * 0.1));
  canvas.width = bodyW + gap + capW;
  canvas.height = height;

  var top = Math.round((height - bodyH) / 2);
  var colour = "rgb(" + rgb.join(",") + ")";
  var accent = charging ? "rgb(52,199,89)" : low ? "rgb(255,59,48)" : colour;
  var lit = Math.ceil(Math.max(0, Math.min(100, level)) / 20);

  function box(x, y, w, h, r) {
    ctx.beginPath();
    ctx.moveTo(x + r, y);
    ctx.arcTo(x + w, y, x + w, y + h, r);
    ctx.arcTo(x + w, y + h, x, y + h, r);
    ctx.arcTo(x, y + h, x, y, r);
    ctx.arcTo(x, y, x + w, y, r);
    ctx.closePath();
  }

  ctx.lineWidth = line;
  ctx.strokeStyle = colour;
  box(line / 2, top + line / 2, bodyW - line, bodyH - line, bodyH * 0.2);
  ctx.stroke();
  ctx.fillStyle = lit === 5 || charging ? accent : colour;
  ctx.save();
  ctx.beginPath();
  ctx.rect(bodyW + gap, 0, capW, height);
  ctx.clip();
  box(bodyW + gap - capW, Math.round(top + bodyH * 0.3), capW * 2, Math.round(bodyH * 0.4), capW / 2);
  ctx.fill();
  ctx.restore();

  // Cell edges are rounded to whole pixels so every gap is equally sharp.
  var inner = line + gap;
  var span = bodyW - inner * 2 + gap;
  for (var i = 0; i < 5; i++) {
    var x0 = inner + Math.round(span * i / 5);
    var x1 = inner + Math.round(span * (i + 1) / 5) - gap;
    if (i < lit) {
      ctx.fillStyle = accent;
      ctx.globalAlpha = 1;
    } else if (charging && i === lit) {
      ctx.fillStyle = accent;
      ctx.globalAlpha = 0.45;
    } else {
      ctx.fillStyle = colour;
      ctx.globalAlpha = 0.15;
    }
    box(x0, top + inner, x1 - x0, bodyH - inner * 2, Math.min(gap, 2));
    ctx.fill();
  }
  return canvas.toDataURL("image/png");
}
