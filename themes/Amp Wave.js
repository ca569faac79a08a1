(height, level, charging, low, lpm, rgb, base) {
  // Amp Wave: a round flask with a rippled liquid surface; the level reads through the liquid.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  canvas.width = height;
  canvas.height = height;

  var main = "rgb(" + rgb.join(",") + ")";
  var liquid = charging ? [52, 199, 89] : lpm ? [255, 204, 0] : low ? [255, 59, 48] : rgb;
  var centre = height / 2;
  var radius = Math.max(0, height / 2 - Math.max(1, Math.round(height / 40)));
  var percent = Math.max(0, Math.min(100, level));
  var surface = centre + radius - 2 * radius * percent / 100;
  // The ripple flattens towards empty and full so the liquid never leaves the flask.
  var amp = radius * 0.08 * Math.sin(Math.PI * percent / 100);

  function flask() {
    ctx.beginPath();
    ctx.arc(centre, centre, radius, 0, Math.PI * 2);
  }
  function wave() {
    var left = centre - radius, right = centre + radius, steps = 24;
    ctx.beginPath();
    ctx.moveTo(left, height);
    for (var i = 0; i <= steps; i++) {
      var x = left + (right - left) * i / steps;
      ctx.lineTo(x, surface + amp * Math.sin(i / steps * Math.PI * 4));
    }
    ctx.lineTo(right, height);
    ctx.closePath();
  }

  var label = String(level);
  var size = Math.round(height * (label.length > 2 ? 0.32 : 0.4));
  ctx.font = "bold " + size + "px \"Helvetica Neue\", Helvetica, Arial, sans-serif";
  ctx.textAlign = "center";
  var textY = Math.round(centre + size * 0.36);
  var boltH = Math.round(height * 0.24), boltW = Math.round(boltH * 0.6);
  var boltY = Math.round(centre - size * 0.36 - boltH - height / 20);
  function marks() {
    ctx.fillText(label, centre, textY);
    if (charging) {
      var pts = [[0.62, 0], [0.04, 0.57], [0.44, 0.57], [0.34, 1], [0.96, 0.41], [0.55, 0.41]];
      ctx.beginPath();
      for (var i = 0; i < pts.length; i++) {
        ctx.lineTo(centre - boltW / 2 + pts[i][0] * boltW, boltY + pts[i][1] * boltH);
      }
      ctx.closePath();
      ctx.fill();
    }
  }

  flask();
  ctx.fillStyle = "rgba(" + base.join(",") + ")";
  ctx.fill();
  ctx.save();
  ctx.clip();
  ctx.fillStyle = main;
  marks();
  if (percent > 0) {
    ctx.fillStyle = "rgb(" + liquid.join(",") + ")";
    wave();
    ctx.fill();
    // Where the liquid covers the level, the level becomes a window.
    ctx.clip();
    ctx.globalCompositeOperation = "destination-out";
    marks();
  }
  ctx.restore();
  return canvas.toDataURL("image/png");
}
