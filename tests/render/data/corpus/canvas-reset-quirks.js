(h, level, charging, low, rgb) {
  var c = document.createElement("canvas"), x = c.getContext("2d");
  // Drawing on the default 300 x 150 canvas, then resizing: the drawing and the state go.
  x.fillStyle = "red";
  x.lineWidth = 9;
  x.translate(50, 50);
  x.fillRect(0, 0, 300, 150);
  c.width = Math.round(h * 1.2);
  c.height = h;
  x.fillRect(0, 0, h / 4, h / 4);           // black, untranslated: the state was reset
  x.fillStyle = "rgb(" + rgb.join(",") + ")";
  x.strokeStyle = x.fillStyle;
  x.strokeRect(h / 2, 0.5, h / 2, h / 4);   // lineWidth back to 1

  // Setting the width to the same value still clears.
  var scratch = document.createElement("canvas");
  scratch.width = 10;
  scratch.height = 10;
  var s = scratch.getContext("2d");
  s.fillRect(0, 0, 10, 10);
  scratch.width = 10;
  x.drawImage(scratch, 0, h / 2);

  var y = Math.round(h * 0.4), barH = Math.round(h * 0.35);
  x.globalAlpha = 0.3;
  x.fillRect(0, y, c.width, barH);
  x.globalAlpha = 1;
  x.fillStyle = charging ? "#34c759" : low ? "#ff3b30" : x.fillStyle;
  x.fillRect(0, y, c.width * level / 100, barH);
  // getContext again returns the same context, with its state.
  c.getContext("2d").fillRect(c.width - 3, 0, 3, 3);
  return c.toDataURL();
}
