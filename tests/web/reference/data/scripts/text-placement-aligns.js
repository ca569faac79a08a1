// tolerance: 32 0.03
// Text placement against Chromium: every textAlign about a guide, regular and bold, "Hg5" in
// Helvetica Neue (Liberation Sans) at 9, 18, 36 and 72 pixels, anchors on and off the pixels.
var sizes = [9, 18, 36, 72];
var aligns = ["left", "right", "center", "start", "end"];
var c = document.createElement("canvas"); c.width = 640; c.height = 1060;
var ctx = c.getContext("2d");
ctx.fillStyle = "#c00"; ctx.fillRect(320, 0, 1, 1060);
ctx.fillStyle = "#000";
var y = 0;
sizes.forEach(function (size) {
  aligns.forEach(function (align, i) {
    y += Math.ceil(size * 1.15);
    ctx.textAlign = align;
    ctx.font = (i % 2 ? "bold " : "") + size + "px \"Helvetica Neue\"";
    ctx.fillText("Hg5", 320 + (i % 3) * 0.25, y + (i % 2) * 0.4);
  });
  y += 4;
});
c.toDataURL()
