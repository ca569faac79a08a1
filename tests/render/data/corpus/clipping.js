(height, level, charging, low, colour) {
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  canvas.width = height;
  canvas.height = height;
  var c = height / 2, r = height * 0.45;
  var rgb = colour.join(",");

  // A ring made by clipping with evenodd: outer circle minus inner circle.
  ctx.beginPath();
  ctx.arc(c, c, r, 0, Math.PI * 2);
  ctx.arc(c, c, r * 0.7, 0, Math.PI * 2);
  ctx.save();
  ctx.clip("evenodd");
  ctx.fillStyle = "rgba(" + rgb + ",0.25)";
  ctx.fillRect(0, 0, height, height);

  // Nested clip: the ring further clipped to the level, rising from the bottom.
  ctx.beginPath();
  ctx.rect(0, height - height * level / 100, height, height * level / 100);
  ctx.clip();
  ctx.fillStyle = charging ? "#34c759" : low ? "#ff3b30" : "rgb(" + rgb + ")";
  ctx.fillRect(0, 0, height, height);
  ctx.restore();

  // A clip given as a Path2D with the nonzero rule: two overlapping squares, same winding.
  var p = new Path2D();
  p.rect(c - r * 0.45, c - r * 0.45, r * 0.6, r * 0.6);
  p.rect(c - r * 0.15, c - r * 0.15, r * 0.6, r * 0.6);
  ctx.save();
  ctx.clip(p, "nonzero");
  ctx.fillStyle = "rgb(" + rgb + ")";
  ctx.beginPath();
  ctx.arc(c, c, r * 0.55, 0, Math.PI * 2);
  ctx.fill();
  ctx.restore();

  // Drawing after restore is not clipped.
  ctx.fillStyle = "rgb(" + rgb + ")";
  ctx.fillRect(0, 0, Math.max(2, height / 12), Math.max(2, height / 12));
  return canvas.toDataURL("image/png");
}
