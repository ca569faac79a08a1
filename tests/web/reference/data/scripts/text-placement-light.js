// tolerance: 32 0.015
// Text placement against Chromium as themes draw it: light and coloured levels with the middle
// baseline, centred in a dark pill little larger than the text (so that the text's edges are
// much of the picture), from 10 to 80 pixels; and bold text cut out of a bar.
var c = document.createElement("canvas"); c.width = 560; c.height = 420;
var ctx = c.getContext("2d");
var colours = ["#ffffff", "#34c759", "#ffcc00", "#ff3b30", "#8e8e93"];
var sizes = [10, 14, 20, 30, 44, 62, 80];
var y = 0;
sizes.forEach(function (size, row) {
  var h = Math.ceil(size * 1.25);
  ctx.fillStyle = "#1c1c1e";
  ctx.fillRect(140 - size * 1.1, y, size * 2.2, h);
  ctx.textAlign = "center";
  ctx.textBaseline = "middle";
  ctx.font = (row % 2 ? "bold " : "") + size + "px \"Helvetica Neue\", Helvetica, Arial, sans-serif";
  ctx.fillStyle = colours[row % colours.length];
  ctx.fillText(String(17 + row * 13) + "%", 140, y + h / 2);
  y += h + 2;
});
// Cut out of a bar with destination-out, as a badge does.
ctx.fillStyle = "#007aff";
ctx.fillRect(296, 48, 236, 76);
ctx.globalCompositeOperation = "destination-out";
ctx.textBaseline = "alphabetic";
ctx.textAlign = "left";
ctx.font = "bold 46px Helvetica";
ctx.fillText("100%", 300.5, 88);
ctx.font = "bold 19px Helvetica";
ctx.fillText("low power", 306, 118);
c.toDataURL()
