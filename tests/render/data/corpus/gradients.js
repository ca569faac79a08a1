(height, level, charging, low, rgb) {
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var size = height;
  canvas.width = Math.round(size * 1.5);
  canvas.height = size;
  var col = "rgb(" + rgb.join(",") + ")";
  var part = Math.max(0, Math.min(100, level)) / 100;

  // Body: a vertical linear gradient with three stops, the last two at the same offset.
  var top = size * 0.25, bodyH = size * 0.5, bodyW = size * 0.95;
  var body = ctx.createLinearGradient(0, top, 0, top + bodyH);
  body.addColorStop(0, "rgba(" + rgb.join(",") + ",0.15)");
  body.addColorStop(0.5, "rgba(" + rgb.join(",") + ",0.35)");
  body.addColorStop(0.5, "rgba(" + rgb.join(",") + ",0.25)");
  body.addColorStop(1, "rgba(" + rgb.join(",") + ",0.1)");
  ctx.fillStyle = body;
  ctx.fillRect(0, top, bodyW, bodyH);

  // Fill: a horizontal gradient from red through yellow to green, clipped to the level.
  var fill = ctx.createLinearGradient(0, 0, bodyW, 0);
  fill.addColorStop(0, "#ff3b30");
  fill.addColorStop(0.3, "#ffcc00");
  fill.addColorStop(1, "#34c759");
  ctx.fillStyle = low ? "#ff3b30" : fill;
  ctx.fillRect(0, top, bodyW * part, bodyH);

  // Gloss: a radial gradient between two circles.
  var gloss = ctx.createRadialGradient(bodyW * 0.3, top, 0, bodyW * 0.3, top, bodyW * 0.6);
  gloss.addColorStop(0, "rgba(255,255,255,0.6)");
  gloss.addColorStop(1, "rgba(255,255,255,0)");
  ctx.fillStyle = gloss;
  ctx.fillRect(0, top, bodyW, bodyH / 2);

  // A conic ring on the right, with a gradient stroke around it.
  var cx = size * 1.22, cy = size / 2, r = size * 0.22;
  var cone = ctx.createConicGradient(-Math.PI / 2, cx, cy);
  cone.addColorStop(0, col);
  cone.addColorStop(part, col);
  cone.addColorStop(part, "rgba(" + rgb.join(",") + ",0.2)");
  cone.addColorStop(1, "rgba(" + rgb.join(",") + ",0.2)");
  ctx.fillStyle = cone;
  ctx.beginPath();
  ctx.arc(cx, cy, r, 0, Math.PI * 2);
  ctx.fill();
  var rim = ctx.createLinearGradient(cx - r, cy - r, cx + r, cy + r);
  rim.addColorStop(0, charging ? "#34c759" : col);
  rim.addColorStop(1, "rgba(128,128,128,0.5)");
  ctx.strokeStyle = rim;
  ctx.lineWidth = Math.max(1, size / 26);
  ctx.stroke();
  return canvas.toDataURL("image/png");
}
