// Colour syntaxes for fillStyle and strokeStyle; invalid values keep the previous style.
var c = document.createElement("canvas"); c.width = 160; c.height = 60;
var ctx = c.getContext("2d");
var colors = ["#f80", "#ff880080", "#4a7", "rebeccapurple", "rgb(10 200 120)", "rgba(255,0,0,.5)",
  "hsl(200, 80%, 40%)", "hsla(120deg 60% 50% / 0.4)", "transparent", "currentcolor", "RED",
  "not a colour", "rgb(300, -20, 128)", "#12345", " lime "];
colors.forEach(function (color, i) {
  ctx.fillStyle = "#000";
  ctx.fillStyle = color;
  ctx.fillRect((i % 8) * 20, Math.floor(i / 8) * 30, 18, 28);
});
ctx.strokeStyle = "hsl(30 100% 50%)"; ctx.lineWidth = 2; ctx.strokeRect(141, 31, 17, 26);
c.toDataURL()
