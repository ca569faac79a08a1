// Every compositing operator and blend mode on its own small canvas (several clear what lies
// outside the source), then copied into a grid; globalAlpha on the last row.
var ops = ["source-over", "source-in", "source-out", "source-atop", "destination-over",
  "destination-in", "destination-out", "destination-atop", "lighter", "copy", "xor",
  "multiply", "screen", "overlay", "darken", "lighten", "color-dodge", "color-burn",
  "hard-light", "soft-light", "difference", "exclusion", "hue", "saturation", "color", "luminosity"];
var c = document.createElement("canvas"); c.width = 7 * 30; c.height = 4 * 30 + 30;
var ctx = c.getContext("2d");
ops.forEach(function (op, i) {
  var cell = document.createElement("canvas"); cell.width = 28; cell.height = 28;
  var x = cell.getContext("2d");
  x.fillStyle = "rgba(20, 90, 220, 0.9)"; x.fillRect(2, 2, 16, 16);
  x.globalCompositeOperation = op;
  x.fillStyle = "rgba(230, 140, 20, 0.75)";
  x.beginPath(); x.arc(18, 18, 9, 0, 2 * Math.PI); x.fill();
  ctx.drawImage(cell, (i % 7) * 30, Math.floor(i / 7) * 30);
});
ctx.globalAlpha = 0.5;
ctx.fillStyle = "#000"; ctx.fillRect(0, 125, 60, 20);
ctx.globalAlpha = 0.25;
ctx.fillStyle = "#f00"; ctx.fillRect(30, 130, 60, 20);
ctx.globalAlpha = 1; ctx.globalCompositeOperation = "bogus";
ctx.fillStyle = "#0a0"; ctx.fillRect(120, 125, 20, 20);
c.toDataURL()
