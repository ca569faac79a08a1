(height, level, charging, low, lpm, rgb, base) {
  // Amp Connect: a soft body whose charge fill carries the level cut out of it, plugged into a
  // small connector; while charging the connector becomes a bolt.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var bodyH = Math.round(height * 0.58);
  var bodyW = Math.round(bodyH * 1.95);
  var gap = Math.max(2, Math.round(height / 22));
  var plugW = charging ? Math.round(bodyH * 0.56) : Math.max(3, Math.round(bodyH * 0.15));
  canvas.width = bodyW + gap + plugW;
  canvas.height = height;

  var top = Math.round((height - bodyH) / 2);
  var mid = top + bodyH / 2;
  var main = "rgb(" + rgb.join(",") + ")";
  var accent = charging ? "rgb(52,199,89)" : lpm ? "rgb(255,204,0)" : low ? "rgb(255,59,48)" : main;
  var fillW = Math.round(bodyW * Math.max(0, Math.min(100, level)) / 100);

  function roundRect(x, y, w, h, r) {
    ctx.beginPath();
    ctx.moveTo(x + r, y);
    ctx.arcTo(x + w, y, x + w, y + h, r);
    ctx.arcTo(x + w, y + h, x, y + h, r);
    ctx.arcTo(x, y + h, x, y, r);
    ctx.arcTo(x, y, x + w, y, r);
    ctx.closePath();
  }

  // The level number: solid over the empty part, a hole through the fill.
  var label = String(level);
  var size = Math.round(bodyH * (label.length > 2 ? 0.66 : 0.76));
  ctx.font = "bold " + size + "px \"Helvetica Neue\", Helvetica, Arial, sans-serif";
  ctx.textAlign = "center";
  var textX = bodyW / 2, textY = Math.round(mid + size * 0.36);

  roundRect(0, top, bodyW, bodyH, bodyH * 0.36);
  ctx.fillStyle = "rgba(" + base.join(",") + ")";
  ctx.fill();
  ctx.save();
  ctx.clip();
  ctx.fillStyle = main;
  ctx.fillText(label, textX, textY);
  ctx.fillStyle = accent;
  ctx.fillRect(0, top, fillW, bodyH);
  ctx.beginPath();
  ctx.rect(0, top, fillW, bodyH);
  ctx.clip();
  ctx.globalCompositeOperation = "destination-out";
  ctx.fillText(label, textX, textY);
  ctx.restore();

  var plugX = bodyW + gap;
  if (charging) {
    // A bolt as tall as the body, in place of the connector.
    var boltH = bodyH, boltW = plugW;
    var pts = [[0.62, 0], [0.04, 0.57], [0.44, 0.57], [0.34, 1], [0.96, 0.41], [0.55, 0.41]];
    ctx.beginPath();
    for (var i = 0; i < pts.length; i++) {
      ctx.lineTo(plugX + pts[i][0] * boltW, top + pts[i][1] * boltH);
    }
    ctx.closePath();
    ctx.fillStyle = accent;
    ctx.fill();
  } else {
    // The connector: flat where it meets the gap, round at its end; lit once full.
    var plugH = Math.round(bodyH * 0.4);
    ctx.beginPath();
    ctx.rect(plugX, 0, plugW, height);
    ctx.clip();
    roundRect(plugX - plugW, Math.round(mid - plugH / 2), plugW * 2, plugH, Math.min(plugW, plugH / 2));
    ctx.fillStyle = level >= 100 ? accent : "rgba(" + base.join(",") + ")";
    ctx.fill();
  }
  return canvas.toDataURL("image/png");
}
