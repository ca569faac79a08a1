(height, level, charging, low, rgb) {
  // A dot-matrix battery: every cell of a coarse grid asks whether it lies in the outline.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var pitch = Math.max(3, Math.round(height / 10));
  var cols = 16, rows = 8;
  canvas.width = cols * pitch;
  canvas.height = height;
  var top = Math.round((height - rows * pitch) / 2);

  var outline = new Path2D();
  outline.rect(pitch * 0.5, top + pitch, pitch * 13.5, pitch * 6);
  outline.rect(pitch * 14, top + pitch * 3, pitch * 1.5, pitch * 2);
  ctx.beginPath();
  ctx.rect(pitch * 1.5, top + pitch * 2, pitch * 11.5, pitch * 4);
  ctx.lineWidth = pitch;

  var litCols = Math.round(12 * level / 100);
  for (var j = 0; j < rows; j++) {
    for (var i = 0; i < cols; i++) {
      var x = (i + 0.5) * pitch, y = top + (j + 0.5) * pitch;
      var inside = ctx.isPointInPath(x, y);
      var onEdge = ctx.isPointInStroke(x, y);
      if (ctx.isPointInPath(outline, x, y) && !inside) {
        ctx.fillStyle = "rgb(" + rgb + ")";
      } else if (inside && i - 1 < litCols) {
        ctx.fillStyle = charging ? "#34c759" : low ? "#ff3b30" : "rgb(" + rgb + ")";
      } else if (inside || onEdge) {
        ctx.fillStyle = "rgba(" + rgb + ",0.2)";
      } else {
        continue;
      }
      ctx.fillRect(i * pitch + 1, top + j * pitch + 1, pitch - 2, pitch - 2);
    }
  }
  // The winding rule matters for a self-overlapping path.
  var star = new Path2D("M5 0 L8 9 L0 3.5 H10 L2 9 Z");
  ctx.save();
  ctx.scale(pitch / 5, pitch / 5);
  ctx.fillStyle = ctx.isPointInPath(star, 5, 5, "evenodd") ? "#ff3b30" : "rgb(" + rgb + ")";
  ctx.restore();
  ctx.fillRect(0, 0, pitch, pitch);
  return canvas.toDataURL("image/png");
}
