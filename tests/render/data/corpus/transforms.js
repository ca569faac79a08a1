(px, lvl, chg, low, col) {
  // A clock face of twelve ticks; the lit ones show the level.
  var c = document.createElement("canvas"), x = c.getContext("2d");
  c.width = c.height = px;
  var on = chg ? "#34c759" : low ? "#ff3b30" : "rgb(" + col + ")";
  var off = "rgba(" + col + ",0.2)";
  var lit = Math.round(lvl * 12 / 100);
  x.translate(px / 2, px / 2);
  for (var i = 0; i < 12; i++) {
    x.save();
    x.rotate(i * Math.PI / 6);
    x.transform(1, 0, 0, 1, 0, -px * 0.32);
    x.fillStyle = i < lit ? on : off;
    x.fillRect(-px / 30, -px / 10, px / 15, px / 5);
    x.restore();
  }
  var m = x.getTransform();
  x.setTransform(1, 0, 0, 1, 0, 0);
  x.fillStyle = "rgb(" + col + ")";
  x.beginPath();
  x.arc(m.e, m.f, px * 0.08, 0, Math.PI * 2);
  x.fill();
  // A hand, skewed then placed with a DOMMatrix.
  x.setTransform(new DOMMatrix().translate(px / 2, px / 2).rotate(lvl * 3.6).scale(1, 1.2));
  x.transform(1, 0, 0.2, 1, 0, 0);
  x.fillRect(-1, -px * 0.3, 2, px * 0.3);
  x.resetTransform();
  x.strokeStyle = on;
  x.lineWidth = 1;
  x.strokeRect(0.5, 0.5, px - 1, px - 1);
  return c.toDataURL("image/png");
}
