(h, level, charging, low) {
  // Four parameters only: no colour comes in, the author picked grey.
  var c = document.createElement("canvas"), x = c.getContext("2d");
  c.width = h * 2;
  c.height = h;
  x.fillStyle = "#808080";
  x.fillRect(0, 0, c.width, c.height);
  x.clearRect(2, 2, c.width - 4, c.height - 4);

  // Lines on integer and half pixels, of whole and fractional widths.
  x.strokeStyle = "#000";
  var widths = [1, 1, 2, 0.5, 1.5, 3];
  for (var i = 0; i < widths.length; i++) {
    x.lineWidth = widths[i];
    var offset = i === 1 ? 0 : 0.5;
    x.beginPath();
    x.moveTo(4 + i * 5 + offset, 4);
    x.lineTo(4 + i * 5 + offset, h - 4);
    x.stroke();
  }
  x.lineWidth = 1;
  x.strokeRect(40.5, 4.5, h - 10, h / 2 - 6);
  x.strokeRect(40, h / 2 + 2, h - 10, h / 2 - 6);
  x.fillStyle = charging ? "#34c759" : low ? "#ff3b30" : "#404040";
  x.fillRect(42, 6, (h - 14) * level / 100, h / 2 - 10);
  x.fillRect(42.3, h / 2 + 4.6, (h - 14) * level / 100, h / 2 - 10);
  // Negative sizes draw towards the origin; a zero size draws nothing, even stroked.
  x.fillRect(c.width - 4, h - 4, -6, -6);
  x.strokeRect(c.width - 20, 6, 0, 0);
  x.strokeRect(c.width - 20, 10, 0, 6);
  x.clearRect(c.width - 8, h - 8, 2, 2);
  return c.toDataURL("image/png");
}
