(height, level, charging, low, rgb) {
  // The canvas is as wide as the text it shows: measured first, drawn after.
  var probe = document.createElement("canvas").getContext("2d");
  var size = Math.round(height * 0.5);
  var font = "bold " + size + "px Helvetica, Arial, sans-serif";
  var small = Math.round(size * 0.6) + "px Helvetica, Arial, sans-serif";
  probe.font = font;
  var number = probe.measureText(String(level));
  probe.font = small;
  var unit = probe.measureText("%");
  var ascent = Math.ceil(number.actualBoundingBoxAscent);
  var descent = Math.ceil(number.actualBoundingBoxDescent);
  var gap = Math.round(size * 0.1);
  var barW = Math.max(3, Math.round(height / 12));

  var canvas = document.createElement("canvas");
  canvas.width = Math.ceil(barW + gap + number.width + unit.width);
  canvas.height = height;
  var ctx = canvas.getContext("2d");
  var baseline = Math.round((height + ascent - descent) / 2);
  var colour = "rgb(" + rgb.join(",") + ")";

  // A vertical level bar beside the digits, as tall as the glyphs' ink.
  ctx.fillStyle = "rgba(" + rgb.join(",") + ",0.25)";
  ctx.fillRect(0, baseline - ascent, barW, ascent + descent);
  ctx.fillStyle = charging ? "#34c759" : low ? "#ff3b30" : colour;
  var inkH = Math.round((ascent + descent) * level / 100);
  ctx.fillRect(0, baseline + descent - inkH, barW, inkH);

  ctx.fillStyle = colour;
  ctx.font = font;
  ctx.fillText(String(level), barW + gap, baseline);
  ctx.font = small;
  ctx.fillText("%", barW + gap + number.width, baseline);
  // Underline as long as the measured word, at the font's descent.
  var under = ctx.measureText("%");
  ctx.fillRect(barW + gap + number.width, baseline + Math.max(1, Math.round(under.fontBoundingBoxDescent / 2)), Math.round(under.width), 1);
  return canvas.toDataURL("image/png");
}
