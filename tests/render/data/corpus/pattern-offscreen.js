(height, level, charging, low, lpm, colour, base) {
  // Tiles are drawn once on small canvases and used as patterns.
  var tile = document.createElement("canvas");
  var t = tile.getContext("2d");
  var step = Math.max(4, Math.round(height / 8));
  tile.width = tile.height = step;
  t.fillStyle = "rgba(" + base.join(",") + ")";
  t.fillRect(0, 0, step, step);
  t.strokeStyle = "rgb(" + colour.join(",") + ")";
  t.lineWidth = Math.max(1, step / 4);
  t.beginPath();
  t.moveTo(0, step);
  t.lineTo(step, 0);
  t.moveTo(-step / 2, step / 2);
  t.lineTo(step / 2, -step / 2);
  t.moveTo(step / 2, step * 1.5);
  t.lineTo(step * 1.5, step / 2);
  t.stroke();

  var dots = document.createElement("canvas");
  dots.width = dots.height = step;
  var d = dots.getContext("2d");
  d.fillStyle = lpm ? "#ffcc00" : charging ? "#34c759" : low ? "#ff3b30" : "rgb(" + colour.join(",") + ")";
  d.beginPath();
  d.arc(step / 2, step / 2, step / 3, 0, Math.PI * 2);
  d.fill();

  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var bodyH = Math.round(height * 0.56), bodyW = Math.round(bodyH * 2);
  canvas.width = bodyW + 4;
  canvas.height = height;
  var top = Math.round((height - bodyH) / 2);

  ctx.fillStyle = ctx.createPattern(tile, "repeat");
  ctx.fillRect(0, top, bodyW, bodyH);
  var filled = ctx.createPattern(dots, "repeat-x");
  filled.setTransform(new DOMMatrix().translate(0, top + (bodyH - step) / 2));
  ctx.fillStyle = filled;
  ctx.fillRect(0, top, Math.round(bodyW * level / 100), bodyH);
  var single = ctx.createPattern(dots, "no-repeat");
  ctx.fillStyle = single;
  ctx.translate(bodyW - step + 4, top - step);
  ctx.fillRect(0, 0, step * 3, step * 3);
  ctx.setTransform(1, 0, 0, 1, 0, 0);
  var column = ctx.createPattern(tile, "repeat-y");
  ctx.fillStyle = column;
  ctx.fillRect(bodyW, top, 4, bodyH);
  return canvas.toDataURL("image/png");
}
