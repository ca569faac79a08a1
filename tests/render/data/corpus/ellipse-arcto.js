(size, level, charging, low, rgb) {
  var cv = document.createElement("canvas");
  var g = cv.getContext("2d");
  cv.width = Math.round(size * 1.6);
  cv.height = size;
  var col = "rgb(" + rgb + ")";
  var lw = Math.max(1, size / 22);

  // Egg shaped body: a rotated ellipse.
  g.beginPath();
  g.ellipse(size * 0.55, size / 2, size * 0.5, size * 0.3, -Math.PI / 16, 0, Math.PI * 2);
  g.fillStyle = "rgba(" + rgb + ",0.2)";
  g.fill();
  g.lineWidth = lw;
  g.strokeStyle = col;
  g.stroke();

  // The level as a partial ellipse drawn anticlockwise, joined to its centre.
  g.beginPath();
  g.moveTo(size * 0.55, size / 2);
  g.ellipse(size * 0.55, size / 2, size * 0.4, size * 0.22, Math.PI / 2 * 0.1, 0, -Math.PI * 2 * level / 100, true);
  g.closePath();
  g.fillStyle = charging ? "#34c759" : low ? "#ff3b30" : col;
  g.fill();

  // A tab with arcTo corners, one radius too large for its edge, one zero.
  var x = size * 1.1, y = size * 0.35, w = size * 0.35, h = size * 0.3;
  g.beginPath();
  g.moveTo(x, y);
  g.arcTo(x + w, y, x + w, y + h, w);
  g.arcTo(x + w, y + h, x, y + h, h / 3);
  g.arcTo(x, y + h, x, y, 0);
  g.closePath();
  g.stroke();

  // Curves: a quadratic swoosh and a cubic wave beneath.
  g.beginPath();
  g.moveTo(size * 0.1, size * 0.9);
  g.quadraticCurveTo(size * 0.5, size * 0.7, size * 0.9, size * 0.92);
  g.bezierCurveTo(size * 1.1, size, size * 1.3, size * 0.75, size * 1.55, size * 0.9);
  g.lineCap = "round";
  g.stroke();
  // An ellipse with a start beyond 2 pi and a circle of zero radius.
  g.beginPath();
  g.ellipse(size * 1.45, size * 0.15, size * 0.08, size * 0.05, 0, Math.PI * 5, Math.PI * 5.5);
  g.ellipse(size * 0.2, size * 0.1, 0, 0, 0, 0, Math.PI * 2);
  g.stroke();
  return cv.toDataURL("image/png");
}
