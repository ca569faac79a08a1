(size, level, charging, low, lowPower, rgb, base) {
  // Each layer pushes the state, changes what it needs and pops it again.
  var cv = document.createElement("canvas"), g = cv.getContext("2d");
  var w = Math.round(size * 1.4), h = size;
  cv.width = w; cv.height = h;
  var main = "rgb(" + rgb + ")";

  g.save();
  g.fillStyle = "rgba(" + base + ")";
  g.strokeStyle = main;
  g.lineWidth = Math.max(1, Math.round(size / 20));
  g.translate(Math.round(size * 0.1), Math.round(size * 0.25));
  var bw = Math.round(size * 1.1), bh = Math.round(size * 0.5);

  g.save();
  g.beginPath();
  g.rect(0, 0, bw, bh);
  g.fill();
  g.clip();

  g.save();
  g.fillStyle = lowPower ? "#ffcc00" : low ? "#ff3b30" : main;
  g.globalAlpha = 0.9;
  g.fillRect(0, 0, bw * level / 100, bh);
  g.restore();

  g.save();
  g.globalCompositeOperation = "destination-out";
  g.translate(bw / 2, bh / 2);
  g.rotate(-Math.PI / 12);
  g.fillRect(-1, -bh, 2, bh * 2);
  g.restore();

  g.fillStyle = main;
  g.fillRect(bw - 3, 0, 3, bh);
  g.restore();

  g.strokeRect(0.5, 0.5, bw - 1, bh - 1);
  g.save();
  g.fillStyle = main;
  g.fillRect(bw + 1, bh / 3, Math.max(2, size / 15), bh / 3);
  g.restore();
  g.restore();

  // Unbalanced restores are ignored, and state after them is the default.
  g.restore();
  g.restore();
  if (charging) {
    g.fillStyle = "#34c759";
    g.beginPath();
    g.arc(w - size * 0.12, size * 0.14, size * 0.1, 0, Math.PI * 2);
    g.fill();
  }
  g.save();
  g.lineWidth = 40;
  g.restore();
  g.beginPath();
  g.moveTo(Math.round(size * 0.1), size - Math.round(size * 0.12) + 0.5);
  g.lineTo(Math.round(size * 0.1) + bw, size - Math.round(size * 0.12) + 0.5);
  g.strokeStyle = main;
  g.stroke();
  return cv.toDataURL("image/png");
}
