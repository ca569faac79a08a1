(height, level, charging, low, lpm, rgb, base) {
  // Amp Gauge: a three-quarter dial around the level; a bolt sits in the opening while charging.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  canvas.width = height;
  canvas.height = height;

  var main = "rgb(" + rgb.join(",") + ")";
  var accent = charging ? "rgb(52,199,89)" : lpm ? "rgb(255,204,0)" : low ? "rgb(255,59,48)" : main;
  var line = Math.max(3, Math.round(height * 0.1));
  var centre = height / 2;
  var radius = Math.max(0, (height - line) / 2 - Math.max(1, Math.round(height / 40)));
  var start = Math.PI * 0.75, sweep = Math.PI * 1.5;
  var percent = Math.max(0, Math.min(100, level));

  ctx.lineCap = "round";
  ctx.lineWidth = line;
  ctx.strokeStyle = "rgba(" + base.join(",") + ")";
  ctx.beginPath();
  ctx.arc(centre, centre, radius, start, start + sweep);
  ctx.stroke();
  if (percent > 0) {
    ctx.strokeStyle = accent;
    ctx.beginPath();
    ctx.arc(centre, centre, radius, start, start + sweep * percent / 100);
    ctx.stroke();
  }

  var label = String(level);
  var size = Math.round(height * (label.length > 2 ? 0.3 : 0.38));
  ctx.font = "bold " + size + "px \"Helvetica Neue\", Helvetica, Arial, sans-serif";
  ctx.textAlign = "center";
  ctx.fillStyle = main;
  ctx.fillText(label, centre, Math.round(centre + size * 0.36));

  if (charging) {
    var boltH = Math.round(height * 0.3), boltW = Math.round(boltH * 0.6);
    var x = centre - boltW / 2, y = height - boltH;
    var pts = [[0.62, 0], [0.04, 0.57], [0.44, 0.57], [0.34, 1], [0.96, 0.41], [0.55, 0.41]];
    ctx.beginPath();
    for (var i = 0; i < pts.length; i++) {
      ctx.lineTo(x + pts[i][0] * boltW, y + pts[i][1] * boltH);
    }
    ctx.closePath();
    ctx.fillStyle = accent;
    ctx.fill();
  }
  return canvas.toDataURL("image/png");
}
