// A theme in the form of the bundled ones, called at level 0 as the battery renderer calls
// it. It keeps the charged part of a gradient with destination-in and
// fillRect(x, y, w * level / 100, h): at level 0 that rectangle has no width yet is still
// composited, so none of the gradient (nor the shine drawn on it) is left, only the outline.
(function (height, level, charging, low, rgb) {
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var width = Math.round(height * 2);
  canvas.width = width;
  canvas.height = height;
  var colour = "rgb(" + rgb.join(",") + ")";
  var line = Math.max(2, Math.round(height / 14));
  var nub = Math.round(height / 8);
  var bodyW = width - nub - line, bodyH = height - line;

  ctx.strokeStyle = colour;
  ctx.lineWidth = line;
  ctx.beginPath();
  ctx.roundRect(line / 2, line / 2, bodyW, bodyH, height / 6);
  ctx.stroke();
  ctx.fillStyle = colour;
  ctx.fillRect(bodyW + line, height * 0.35, nub, height * 0.3);

  // The charge: a red to green gradient over the whole inside, cut to the level.
  var pad = line * 2;
  var bar = document.createElement("canvas");
  bar.width = bodyW - 2 * pad + line;
  bar.height = bodyH - 2 * pad + line;
  var b = bar.getContext("2d");
  var gradient = b.createLinearGradient(0, 0, bar.width, 0);
  gradient.addColorStop(0, "rgb(255,59,48)");
  gradient.addColorStop(0.5, "rgb(255,204,0)");
  gradient.addColorStop(1, "rgb(52,199,89)");
  b.fillStyle = gradient;
  b.fillRect(0, 0, bar.width, bar.height);
  b.strokeStyle = "rgba(255,255,255,0.6)";
  b.lineWidth = 2;
  b.beginPath();
  b.moveTo(2, 3);
  b.lineTo(bar.width - 2, 3);
  b.stroke();
  b.globalCompositeOperation = "destination-in";
  b.fillStyle = "#000";
  b.fillRect(0, 0, bar.width * level / 100, bar.height);
  ctx.drawImage(bar, pad, pad);
  return canvas.toDataURL("image/png");
})(40, 0, false, false, [255, 255, 255])
