(height, level, charging, low, lpm, colour, base) {
  // Draws a plain bar, then works on its pixels: a fade from top to bottom, a scan line,
  // and the level digits thresholded into hard pixels.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var w = Math.round(height * 1.3), h = height;
  canvas.width = w;
  canvas.height = h;
  var top = Math.round(h * 0.22), bodyH = Math.round(h * 0.56);

  ctx.fillStyle = "rgba(" + base.join(",") + ")";
  ctx.fillRect(0, top, w, bodyH);
  ctx.fillStyle = lpm ? "#ffcc00" : charging ? "#34c759" : low ? "#ff3b30" : "rgb(" + colour.join(",") + ")";
  ctx.fillRect(0, top, Math.round(w * level / 100), bodyH);

  var image = ctx.getImageData(0, top, w, bodyH);
  var data = image.data;
  for (var y = 0; y < bodyH; y++) {
    var fade = 1 - 0.5 * y / bodyH;
    for (var x = 0; x < w; x++) {
      var i = (y * w + x) * 4;
      data[i + 3] = Math.round(data[i + 3] * fade);
    }
  }
  ctx.putImageData(image, 0, top);

  // Only the dirty rectangle (one row) of this copy is written back.
  var line = ctx.getImageData(0, top, w, bodyH);
  for (var k = 0; k < w * 4; k += 4) {
    line.data[Math.floor(bodyH / 2) * w * 4 + k + 3] = 0;
  }
  ctx.putImageData(line, 0, top, 0, Math.floor(bodyH / 2), w, 1);

  // Digits drawn on a scratch canvas, then copied where they are dark enough.
  var scratch = document.createElement("canvas");
  scratch.width = w;
  scratch.height = h;
  var s = scratch.getContext("2d");
  s.font = "bold " + Math.round(bodyH * 0.8) + "px sans-serif";
  s.fillStyle = "#000";
  s.textAlign = "center";
  s.fillText(String(level), w / 2, top + bodyH * 0.82);
  var glyphs = s.getImageData(0, 0, w, h);
  var out = ctx.createImageData(w, h);
  for (var p = 0; p < glyphs.data.length; p += 4) {
    if (glyphs.data[p + 3] > 127) {
      out.data[p] = colour[0] ^ 255;
      out.data[p + 1] = colour[1] ^ 255;
      out.data[p + 2] = colour[2] ^ 255;
      out.data[p + 3] = 255;
    }
  }
  var copy = ctx.createImageData(out);
  copy.data.set(out.data);
  scratch.getContext("2d").putImageData(copy, 0, 0);
  ctx.drawImage(scratch, 0, 0);
  return canvas.toDataURL("image/png");
}
