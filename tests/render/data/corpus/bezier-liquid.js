(height, level, charging, low, powerSave, colour) {
  // Six parameters: the long form is used, and the base colour is simply not taken.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var w = Math.round(height * 0.7), h = height;
  canvas.width = w;
  canvas.height = h;
  var rgb = colour.join(",");
  var tone = powerSave ? "255,204,0" : charging ? "52,199,89" : low ? "255,59,48" : rgb;

  // A bottle: straight shoulders drawn with cubic curves.
  function bottle() {
    ctx.beginPath();
    ctx.moveTo(w * 0.35, h * 0.04);
    ctx.lineTo(w * 0.65, h * 0.04);
    ctx.lineTo(w * 0.65, h * 0.16);
    ctx.bezierCurveTo(w * 0.95, h * 0.2, w * 0.95, h * 0.28, w * 0.95, h * 0.36);
    ctx.lineTo(w * 0.95, h * 0.88);
    ctx.bezierCurveTo(w * 0.95, h * 0.96, w * 0.9, h * 0.97, w * 0.8, h * 0.97);
    ctx.lineTo(w * 0.2, h * 0.97);
    ctx.bezierCurveTo(w * 0.1, h * 0.97, w * 0.05, h * 0.96, w * 0.05, h * 0.88);
    ctx.lineTo(w * 0.05, h * 0.36);
    ctx.bezierCurveTo(w * 0.05, h * 0.28, w * 0.05, h * 0.2, w * 0.35, h * 0.16);
    ctx.closePath();
  }

  bottle();
  ctx.fillStyle = "rgba(" + rgb + ",0.18)";
  ctx.fill();
  ctx.save();
  ctx.clip();
  var surface = h * 0.97 - h * 0.9 * level / 100;
  var grad = ctx.createLinearGradient(0, surface, 0, h);
  grad.addColorStop(0, "rgba(" + tone + ",0.75)");
  grad.addColorStop(1, "rgb(" + tone + ")");
  ctx.fillStyle = grad;
  ctx.beginPath();
  ctx.moveTo(0, surface);
  ctx.bezierCurveTo(w * 0.3, surface - h * 0.05, w * 0.6, surface + h * 0.05, w, surface);
  ctx.lineTo(w, h);
  ctx.lineTo(0, h);
  ctx.closePath();
  ctx.fill();
  // Bubbles, lighter.
  ctx.globalCompositeOperation = "lighter";
  ctx.fillStyle = "rgba(255,255,255,0.35)";
  for (var i = 0; i < 3; i++) {
    ctx.beginPath();
    ctx.arc(w * (0.3 + 0.2 * i), h * 0.85 - i * h * 0.08, h * 0.025 * (i + 1), 0, Math.PI * 2);
    ctx.fill();
  }
  ctx.restore();
  bottle();
  ctx.lineWidth = Math.max(1, h / 30);
  ctx.strokeStyle = "rgb(" + rgb + ")";
  ctx.stroke();
  return canvas.toDataURL("image/png");
}
