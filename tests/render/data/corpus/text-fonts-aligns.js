(height, level, charging, low, lpm, colour, base) {
  // A typographic specimen: the same level in several families, alignments and baselines.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var w = height * 3, h = height;
  canvas.width = w;
  canvas.height = h;
  var main = "rgb(" + colour.join(",") + ")";
  var guide = "rgba(" + base.join(",") + ")";

  ctx.fillStyle = guide;
  ctx.fillRect(0, Math.round(h / 2), w, 1);
  ctx.fillRect(Math.round(w / 2), 0, 1, h);

  var size = Math.round(h * 0.3);
  var cells = [
    ["left", "top", "bold " + size + "px serif"],
    ["center", "middle", "italic " + size + "px sans-serif"],
    ["right", "alphabetic", size + "px monospace"],
    ["start", "bottom", "bold italic " + size + "px \"Liberation Sans\", sans-serif"],
    ["end", "hanging", "300 " + size + "px Arial"],
    ["center", "ideographic", "small-caps " + size + "px Georgia, serif"]
  ];
  for (var i = 0; i < cells.length; i++) {
    var x = (i % 3) * w / 3 + w / 6;
    var y = i < 3 ? h * 0.3 : h * 0.75;
    ctx.textAlign = cells[i][0];
    ctx.textBaseline = cells[i][1];
    ctx.font = cells[i][2];
    ctx.fillStyle = main;
    ctx.fillText(i === 1 ? level + "%" : String(level), x, y);
    ctx.fillStyle = "#ff3b30";
    ctx.fillRect(x - 1, y - 1, 2, 2);
  }

  // Outlined text and text squeezed to a maximum width.
  ctx.textAlign = "left";
  ctx.textBaseline = "alphabetic";
  ctx.font = "bold " + Math.round(h * 0.22) + "px sans-serif";
  ctx.lineWidth = 1;
  ctx.strokeStyle = lpm ? "#ffcc00" : charging ? "#34c759" : low ? "#ff3b30" : main;
  ctx.strokeText("AMP", 2, h - 2);
  ctx.fillStyle = main;
  ctx.fillText("battery level", w * 0.75, h - 2, w * 0.2);
  ctx.direction = "rtl";
  ctx.textAlign = "start";
  ctx.fillText("%", w - 2, h * 0.12 + size / 2);
  return canvas.toDataURL("image/png");
}
