(height, level, charging, low, rgb) {
  // A careless author: bad numbers, bad strings and a throwing call in the middle.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  canvas.width = Math.round(height * 1.2);
  canvas.height = height;
  var col = "rgb(" + rgb + ")";
  ctx.fillStyle = col;
  ctx.strokeStyle = col;

  ctx.fillRect(NaN, 0, 10, 10);                 // ignored
  ctx.fillRect(0, 0, Infinity, 10);             // ignored
  ctx.lineWidth = 0;                            // ignored, stays 1
  ctx.lineWidth = -3;                           // ignored
  ctx.lineWidth = NaN;                          // ignored
  ctx.globalAlpha = NaN;                        // ignored
  ctx.fillStyle = "no such colour";             // ignored
  ctx.font = "not a font";                      // ignored
  ctx.shadowBlur = -5;                          // ignored
  ctx.translate(Infinity, 0);                   // ignored
  ctx.scale(NaN, 2);                            // ignored
  ctx.rotate(undefined);                        // NaN, ignored
  try {
    ctx.arc(10, 10, -1, 0, Math.PI);            // throws IndexSizeError
  } catch (e) {
    ctx.fillText(e.name.charAt(0), 0, height - 2);
  }
  try {
    ctx.getImageData(0, 0, 0, 10);              // throws: zero width
  } catch (e) {
    ctx.fillRect(0, 0, 2, 2);
  }

  ctx.beginPath();
  ctx.moveTo(NaN, 5);                           // ignored
  ctx.lineTo(height * 0.1, height * 0.3);
  ctx.lineTo(height * 1.1, height * 0.3);
  ctx.lineTo(height * 1.1, Infinity);           // ignored
  ctx.lineTo(height * 1.1, height * 0.7);
  ctx.lineTo(height * 0.1, height * 0.7);
  ctx.closePath();
  ctx.stroke();

  ctx.fillStyle = charging ? "#34c759" : low ? "#ff3b30" : col;
  ctx.fillRect(height * 0.1 + 2, height * 0.3 + 2, (height - 4) * Math.max(0, level) / 100, height * 0.4 - 4);
  ctx.bezierCurveTo(1, 2, 3, 4, NaN, 6);        // ignored
  ctx.arc(0, 0, 0, 0, 0);
  ctx.fillText("", 0, 0);
  ctx.drawImage(document.createElement("canvas"), 0, 0);
  return canvas.toDataURL("image/png");
}
