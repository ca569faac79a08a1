// textBaseline in every value against a guide line.
var c = document.createElement("canvas"); c.width = 240; c.height = 70;
var ctx = c.getContext("2d");
ctx.fillStyle = "#f00"; ctx.fillRect(0, 35, 240, 1);
ctx.fillStyle = "#000"; ctx.font = "20px Helvetica";
["top", "hanging", "middle", "alphabetic", "ideographic", "bottom"].forEach(function (baseline, i) {
  ctx.textBaseline = baseline; ctx.fillText("Hg", 4 + i * 40, 35);
});
c.toDataURL()
