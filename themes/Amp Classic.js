(height, level, charging, low, lpm, rgb, base) {
  // Amp Classic: the familiar outlined battery with an inset fill and a terminal cap.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var bodyH = Math.round(height * 0.56);
  var bodyW = Math.round(bodyH * 2);
  var line = Math.max(2, Math.round(height / 26));
  var inset = line + Math.max(1, Math.round(height / 36));
  var capW = Math.max(2, Math.round(bodyH * 0.11));
  var capGap = Math.max(1, Math.round(line / 2));
  canvas.width = bodyW + capGap + capW;
  canvas.height = height;

  var top = Math.round((height - bodyH) / 2);
  var outer = bodyH * 0.28;
  var main = "rgb(" + rgb.join(",") + ")";
  var frame = "rgba(" + base.join(",") + ")";
  var accent = charging ? "rgb(52,199,89)" : lpm ? "rgb(255,204,0)" : low ? "rgb(255,59,48)" : main;

  function roundRect(x, y, w, h, r) {
    r = Math.max(0, Math.min(r, w / 2, h / 2));
    ctx.beginPath();
    ctx.moveTo(x + r, y);
    ctx.arcTo(x + w, y, x + w, y + h, r);
    ctx.arcTo(x + w, y + h, x, y + h, r);
    ctx.arcTo(x, y + h, x, y, r);
    ctx.arcTo(x, y, x + w, y, r);
    ctx.closePath();
  }

  // Frame stroked on the pixel grid: its outer edge lands on whole pixels.
  ctx.lineWidth = line;
  ctx.strokeStyle = frame;
  roundRect(line / 2, top + line / 2, bodyW - line, bodyH - line, outer - line / 2);
  ctx.stroke();

  var capH = Math.round(bodyH * 0.36);
  ctx.fillStyle = level >= 100 && !charging ? main : frame;
  ctx.save();
  ctx.beginPath();
  ctx.rect(bodyW + capGap, 0, capW, height);
  ctx.clip();
  roundRect(bodyW + capGap - capW, Math.round(top + (bodyH - capH) / 2), capW * 2, capH, capW);
  ctx.fill();
  ctx.restore();

  var innerW = bodyW - inset * 2, innerH = bodyH - inset * 2;
  var fillW = Math.round(innerW * Math.max(0, Math.min(100, level)) / 100);
  if (fillW > 0) {
    ctx.save();
    roundRect(inset, top + inset, innerW, innerH, outer - inset);
    ctx.clip();
    ctx.fillStyle = accent;
    ctx.fillRect(inset, top + inset, fillW, innerH);
    ctx.restore();
  }

  if (charging) {
    var boltH = Math.round(bodyH * 0.8), boltW = Math.round(boltH * 0.58);
    var x = Math.round((bodyW - boltW) / 2), y = Math.round(top + (bodyH - boltH) / 2);
    var pts = [[0.62, 0], [0.04, 0.57], [0.44, 0.57], [0.34, 1], [0.96, 0.41], [0.55, 0.41]];
    ctx.beginPath();
    for (var i = 0; i < pts.length; i++) {
      ctx.lineTo(x + pts[i][0] * boltW, y + pts[i][1] * boltH);
    }
    ctx.closePath();
    ctx.globalCompositeOperation = "destination-out";
    ctx.lineWidth = line * 1.5;
    ctx.lineJoin = "round";
    ctx.stroke();
    ctx.globalCompositeOperation = "source-over";
    ctx.fillStyle = main;
    ctx.fill();
  }
  return canvas.toDataURL("image/png");
}
