(height, level, charging, low, rgb) {
  // Amp Bar-Thin: one slim rounded bar, with a small bolt at its end while charging.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var width = Math.round(height * 1.25);
  var thick = Math.max(3, Math.round(height * 0.11));
  canvas.width = width;
  canvas.height = height;

  // While charging the bar gives up its right end to a bolt.
  var boltH = Math.round(height * 0.5), boltW = Math.round(boltH * 0.6);
  var barW = charging ? width - boltW - Math.max(2, Math.round(height / 16)) : width;
  var top = Math.round((height - thick) / 2);
  var colour = "rgb(" + rgb.join(",") + ")";
  var accent = charging ? "rgb(52,199,89)" : low ? "rgb(255,59,48)" : colour;
  var percent = Math.max(0, Math.min(100, level));
  var fillW = percent > 0 ? Math.max(thick, Math.round(barW * percent / 100)) : 0;

  function pill(x, w) {
    var r = thick / 2;
    ctx.beginPath();
    ctx.arc(x + r, top + r, r, Math.PI / 2, Math.PI * 1.5);
    ctx.arc(x + w - r, top + r, r, -Math.PI / 2, Math.PI / 2);
    ctx.closePath();
  }

  ctx.globalAlpha = 0.28;
  ctx.fillStyle = colour;
  pill(0, barW);
  ctx.fill();
  ctx.globalAlpha = 1;
  ctx.fillStyle = accent;
  if (fillW > 0) {
    pill(0, fillW);
    ctx.fill();
  }
  if (charging) {
    var x = width - boltW, y = Math.round((height - boltH) / 2);
    var pts = [[0.62, 0], [0.04, 0.57], [0.44, 0.57], [0.34, 1], [0.96, 0.41], [0.55, 0.41]];
    ctx.beginPath();
    for (var i = 0; i < pts.length; i++) {
      ctx.lineTo(x + pts[i][0] * boltW, y + pts[i][1] * boltH);
    }
    ctx.closePath();
    ctx.fill();
  }
  return canvas.toDataURL("image/png");
}
