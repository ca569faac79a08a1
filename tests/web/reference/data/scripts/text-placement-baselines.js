// tolerance: 32 0.03
// Text placement against Chromium: "55%" in Helvetica (Liberation Sans) at sizes from 8 to
// 100 pixels in every textBaseline, at whole and fractional anchors, regular and bold.
var sizes = [8, 11, 16, 24, 40, 64, 100];
var baselines = ["top", "hanging", "middle", "alphabetic", "ideographic", "bottom"];
var c = document.createElement("canvas"); c.width = 1200; c.height = 480;
var ctx = c.getContext("2d");
var y = 0;
sizes.forEach(function (size) {
  var rowHeight = Math.ceil(size * 1.6) + 6;
  baselines.forEach(function (baseline, i) {
    var x = 4 + i * Math.ceil(size * 1.9 + 6);
    var anchorY = y + Math.round(rowHeight * 0.55) + (i % 2 ? 0.5 : 0);
    ctx.textBaseline = baseline;
    ctx.font = (i % 3 === 2 ? "bold " : "") + size + "px Helvetica";
    ctx.fillText("55%", x + (i % 3) * 0.3, anchorY);
  });
  y += rowHeight;
});
c.toDataURL()
