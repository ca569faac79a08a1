(height, level, charging, low, lpm, rgb, base) {
  // Amp Pill: an upright capsule filling from the bottom, with a small terminal on top.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var margin = Math.max(1, Math.round(height / 20));
  var bodyW = Math.round(height * 0.4);
  var nubH = Math.max(2, Math.round(height * 0.07));
  var nubW = Math.round(bodyW * 0.42);
  var top = margin + nubH + Math.max(1, Math.round(height / 40));
  var bodyH = height - top - margin;
  canvas.width = bodyW + margin * 2;
  canvas.height = height;

  var main = "rgb(" + rgb.join(",") + ")";
  var accent = charging ? "rgb(52,199,89)" : lpm ? "rgb(255,204,0)" : low ? "rgb(255,59,48)" : main;
  var r = bodyW / 2, left = margin;
  var fillH = Math.round(bodyH * Math.max(0, Math.min(100, level)) / 100);

  ctx.fillStyle = level >= 100 ? accent : "rgba(" + base.join(",") + ")";
  ctx.beginPath();
  ctx.moveTo(left + (bodyW - nubW) / 2, margin + nubH);
  ctx.lineTo(left + (bodyW - nubW) / 2, margin + nubH / 2);
  ctx.arcTo(left + (bodyW - nubW) / 2, margin, left + bodyW / 2, margin, nubH / 2);
  ctx.arcTo(left + (bodyW + nubW) / 2, margin, left + (bodyW + nubW) / 2, margin + nubH, nubH / 2);
  ctx.lineTo(left + (bodyW + nubW) / 2, margin + nubH);
  ctx.closePath();
  ctx.fill();

  var boltH = Math.round(bodyH * 0.42), boltW = Math.round(boltH * 0.6);
  function bolt() {
    var x = left + (bodyW - boltW) / 2, y = Math.round(top + (bodyH - boltH) / 2);
    var pts = [[0.62, 0], [0.04, 0.57], [0.44, 0.57], [0.34, 1], [0.96, 0.41], [0.55, 0.41]];
    ctx.beginPath();
    for (var i = 0; i < pts.length; i++) {
      ctx.lineTo(x + pts[i][0] * boltW, y + pts[i][1] * boltH);
    }
    ctx.closePath();
    ctx.fill();
  }

  ctx.beginPath();
  ctx.arc(left + r, top + r, r, Math.PI, 0);
  ctx.arc(left + r, top + bodyH - r, r, 0, Math.PI);
  ctx.closePath();
  ctx.fillStyle = "rgba(" + base.join(",") + ")";
  ctx.fill();
  ctx.save();
  ctx.clip();
  // While charging the bolt is solid above the fill and a window through it.
  ctx.fillStyle = main;
  if (charging) bolt();
  ctx.fillStyle = accent;
  ctx.fillRect(left, top + bodyH - fillH, bodyW, fillH);
  if (charging) {
    ctx.beginPath();
    ctx.rect(left, top + bodyH - fillH, bodyW, fillH);
    ctx.clip();
    ctx.globalCompositeOperation = "destination-out";
    bolt();
  }
  ctx.restore();
  return canvas.toDataURL("image/png");
}
