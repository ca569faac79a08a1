(height, level, charging, low, rgb) {
  // Amp Dots: ten dots in two rows, each a tenth of charge, lit column by column from the left.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var dot = Math.max(4, Math.round(height * 0.22));
  var pitch = Math.round(dot * 1.4);
  var margin = Math.max(1, Math.round(height / 40));
  canvas.width = pitch * 4 + dot + margin * 2;
  canvas.height = height;

  var colour = "rgb(" + rgb.join(",") + ")";
  var accent = charging ? "rgb(52,199,89)" : low ? "rgb(255,59,48)" : colour;
  var lit = Math.ceil(Math.max(0, Math.min(100, level)) / 10);
  var top = Math.round((height - pitch - dot) / 2);

  for (var i = 0; i < 10; i++) {
    var column = Math.floor(i / 2), row = 1 - i % 2;
    var cx = margin + column * pitch + dot / 2;
    var cy = top + row * pitch + dot / 2;
    ctx.beginPath();
    if (charging && i === lit) {
      // The dot being charged is drawn as a ring.
      var ring = Math.max(1, Math.round(dot / 6));
      ctx.arc(cx, cy, (dot - ring) / 2, 0, Math.PI * 2);
      ctx.lineWidth = ring;
      ctx.strokeStyle = accent;
      ctx.stroke();
      continue;
    }
    ctx.arc(cx, cy, dot / 2, 0, Math.PI * 2);
    ctx.globalAlpha = i < lit ? 1 : 0.2;
    ctx.fillStyle = i < lit ? accent : colour;
    ctx.fill();
    ctx.globalAlpha = 1;
  }
  return canvas.toDataURL("image/png");
}
