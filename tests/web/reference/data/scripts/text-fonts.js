// Font shorthand: sizes in px and pt, weight, style, family lists, strokeText, colours.
var c = document.createElement("canvas"); c.width = 220; c.height = 160;
var ctx = c.getContext("2d");
var fonts = ["10px sans-serif", "14pt Helvetica Neue", "bold 18px Helvetica", "italic 18px sans-serif",
  "italic bold 20px 'Helvetica Neue', Arial, sans-serif", "300 16px sans-serif", "small-caps 16px sans-serif"];
fonts.forEach(function (font, i) {
  ctx.font = font; ctx.fillStyle = i % 2 ? "#204080" : "#000";
  ctx.fillText("Battery 42%", 4, 18 + i * 20);
});
ctx.font = "bold 40px sans-serif"; ctx.lineWidth = 1.5; ctx.strokeStyle = "#c03000";
ctx.strokeText("55", 150, 60);
ctx.font = "garbage"; ctx.fillStyle = "#0a0"; ctx.fillText("kept", 150, 100);
c.toDataURL()
