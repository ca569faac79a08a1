// textAlign in every value, in both writing directions, against a guide line.
var c = document.createElement("canvas"); c.width = 200; c.height = 150;
var ctx = c.getContext("2d");
ctx.fillStyle = "#f00"; ctx.fillRect(100, 0, 1, 150);
ctx.fillStyle = "#000"; ctx.font = "16px Helvetica Neue";
["start", "end", "left", "right", "center"].forEach(function (align, i) {
  ctx.textAlign = align; ctx.fillText(align + " Ag", 100, 20 + i * 20);
});
ctx.direction = "rtl";
ctx.fillStyle = "#0040a0";
ctx.textAlign = "start"; ctx.fillText("rtl start", 100, 122);
ctx.textAlign = "end"; ctx.fillText("rtl end", 100, 142);
c.toDataURL()
