(height, level, charging, low, lpm, rgb, base) {
  // One segment is drawn once and stamped with drawImage in its three forms.
  var seg = document.createElement("canvas");
  var n = Math.max(6, Math.round(height / 4));
  seg.width = n;
  seg.height = n * 2;
  var s = seg.getContext("2d");
  var on = lpm ? "#ffcc00" : charging ? "#34c759" : low ? "#ff3b30" : "rgb(" + rgb.join(",") + ")";
  s.fillStyle = on;
  s.fillRect(1, 1, n - 2, n * 2 - 2);
  s.fillStyle = "rgba(" + base.join(",") + ")";
  s.fillRect(0, n, n, n);

  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  canvas.width = n * 10 + 4;
  canvas.height = height;
  var top = Math.round((height - n) / 2);
  var lit = Math.round(level / 10);
  for (var i = 0; i < 10; i++) {
    if (i < lit) {
      ctx.drawImage(seg, 0, 0, n, n, i * n, top, n, n);     // the lit half, 9 arguments
    } else {
      ctx.drawImage(seg, 0, n, n, n, i * n, top, n, n);     // the dim half
    }
  }
  // 3 arguments: the whole segment, unscaled, as the terminal.
  ctx.drawImage(seg, n * 10, top - n / 2);
  // 5 arguments, scaled down without smoothing, then with it.
  ctx.imageSmoothingEnabled = false;
  ctx.drawImage(seg, 0, 0, n / 2, n / 3);
  ctx.imageSmoothingEnabled = true;
  ctx.imageSmoothingQuality = "high";
  ctx.drawImage(seg, n, 0, n / 2, n / 3);
  // Scaled up with a source rectangle that reaches outside the source, and with a negative size.
  ctx.drawImage(seg, -n, -n, n * 3, n * 4, n * 3, height - n / 2, n, n / 2);
  ctx.drawImage(seg, 0, 0, n, n, n * 7, height, n, -n / 2);
  // A canvas drawn onto itself.
  ctx.globalAlpha = 0.5;
  ctx.drawImage(canvas, 0, top, n * 2, n, n * 8, 0, n * 2, n / 2);
  return canvas.toDataURL("image/png");
}
