// maxWidth squeezes text; measureText widths and bounding boxes drawn as boxes around text.
var c = document.createElement("canvas"); c.width = 200; c.height = 130;
var ctx = c.getContext("2d");
ctx.font = "18px Helvetica Neue"; ctx.fillStyle = "#000";
ctx.fillText("Squeezed text here", 4, 22, 100);
ctx.fillStyle = "#f00"; ctx.fillRect(104, 5, 1, 22); ctx.fillStyle = "#000";
ctx.textAlign = "center"; ctx.fillText("Centred squeeze", 100, 48, 60); ctx.textAlign = "start";
var words = ["100", "Wide W", "iii"];
ctx.font = "20px sans-serif";
var x = 4;
words.forEach(function (w) {
  var m = ctx.measureText(w);
  ctx.fillStyle = "rgba(0, 120, 255, 0.3)";
  ctx.fillRect(x - m.actualBoundingBoxLeft, 90 - m.actualBoundingBoxAscent,
               m.actualBoundingBoxLeft + m.actualBoundingBoxRight,
               m.actualBoundingBoxAscent + m.actualBoundingBoxDescent);
  ctx.fillStyle = "rgba(255, 0, 0, 0.5)"; ctx.fillRect(x, 96, m.width, 3);
  ctx.fillStyle = "#000"; ctx.fillText(w, x, 90);
  x += m.width + 10;
});
ctx.fillStyle = "#080"; ctx.fillRect(4, 105, Math.round(ctx.measureText("55").width), 20);
c.toDataURL()
