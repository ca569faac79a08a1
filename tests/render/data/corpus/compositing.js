(height, level, charging, low, lpm, rgb, base) {
  // Small swatches, each built with a different compositing operator, over a battery bar.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var s = Math.max(1, Math.round(height / 3));
  var ops = ["source-over", "source-in", "source-out", "source-atop", "destination-over",
    "destination-in", "destination-out", "destination-atop", "lighter", "copy", "xor",
    "multiply", "screen", "overlay", "darken", "lighten", "color-dodge", "color-burn",
    "hard-light", "soft-light", "difference", "exclusion", "hue", "saturation", "color",
    "luminosity"];
  canvas.width = s * 13;
  canvas.height = height;
  var main = "rgb(" + rgb.join(",") + ")";
  var state = lpm ? "255,204,0" : charging ? "52,199,89" : low ? "255,59,48" : rgb.join(",");

  for (var i = 0; i < ops.length; i++) {
    var x = (i % 13) * s, y = i < 13 ? 0 : s;
    ctx.save();
    ctx.beginPath();
    ctx.rect(x, y, s, s);
    ctx.clip();
    ctx.fillStyle = "rgba(" + base.join(",") + ")";
    ctx.fillRect(x, y, s * 0.7, s * 0.7);
    ctx.fillStyle = "rgba(0,122,255,0.8)";
    ctx.fillRect(x + 2, y + 2, s * 0.4, s * 0.4);
    ctx.globalCompositeOperation = ops[i];
    ctx.fillStyle = "rgba(" + state + ",0.85)";
    ctx.beginPath();
    ctx.arc(x + s * 0.6, y + s * 0.6, s * 0.35, 0, Math.PI * 2);
    ctx.fill();
    ctx.restore();
  }

  // The bar: the level masks a full-width fill with destination-in.
  var bar = document.createElement("canvas");
  bar.width = canvas.width;
  bar.height = s;
  var b = bar.getContext("2d");
  b.fillStyle = main;
  b.fillRect(0, s / 4, bar.width, s / 2);
  b.globalCompositeOperation = "destination-in";
  b.fillRect(0, 0, bar.width * level / 100, s);
  b.globalCompositeOperation = "destination-over";
  b.fillStyle = "rgba(" + base.join(",") + ")";
  b.fillRect(0, s / 4, bar.width, s / 2);
  ctx.globalCompositeOperation = "unknown-operator";
  ctx.drawImage(bar, 0, s * 2);
  return canvas.toDataURL("image/png");
}
