(height, level, charging, low, rgb) {
  // Amp Badge: just the percentage, cut out of a solid pill.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var family = "\"Helvetica Neue\", Helvetica, Arial, sans-serif";
  var digits = String(level);
  var size = Math.round(height * 0.46), small = Math.round(height * 0.28);
  var pillH = Math.round(height * 0.66);
  var pad = Math.round(pillH * 0.34);
  var boltH = Math.round(pillH * 0.62), boltW = Math.round(boltH * 0.6);
  var boltGap = charging ? Math.round(size * 0.14) : 0;

  ctx.font = "bold " + size + "px " + family;
  var digitsW = ctx.measureText(digits).width;
  ctx.font = "bold " + small + "px " + family;
  var signW = ctx.measureText("%").width;
  var contentW = (charging ? boltW + boltGap : 0) + digitsW + signW;

  // Resizing the canvas resets its state, so the font is set again after.
  canvas.width = Math.max(1, Math.ceil(contentW + pad * 2));
  canvas.height = height;
  var top = Math.round((height - pillH) / 2);
  var colour = "rgb(" + rgb.join(",") + ")";
  ctx.fillStyle = charging ? "rgb(52,199,89)" : low ? "rgb(255,59,48)" : colour;
  var r = pillH / 2;
  ctx.beginPath();
  ctx.arc(r, top + r, r, Math.PI / 2, Math.PI * 1.5);
  ctx.arc(canvas.width - r, top + r, r, -Math.PI / 2, Math.PI / 2);
  ctx.closePath();
  ctx.fill();

  ctx.globalCompositeOperation = "destination-out";
  var x = (canvas.width - contentW) / 2;
  var baseline = Math.round(top + pillH / 2 + size * 0.36);
  if (charging) {
    var y = Math.round(top + (pillH - boltH) / 2);
    var pts = [[0.62, 0], [0.04, 0.57], [0.44, 0.57], [0.34, 1], [0.96, 0.41], [0.55, 0.41]];
    ctx.beginPath();
    for (var i = 0; i < pts.length; i++) {
      ctx.lineTo(x + pts[i][0] * boltW, y + pts[i][1] * boltH);
    }
    ctx.closePath();
    ctx.fill();
    x += boltW + boltGap;
  }
  ctx.font = "bold " + size + "px " + family;
  ctx.fillText(digits, x, baseline);
  ctx.font = "bold " + small + "px " + family;
  ctx.fillText("%", x + digitsW, baseline);
  return canvas.toDataURL("image/png");
}
