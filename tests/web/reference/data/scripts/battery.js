// A battery in the style theme authors use: outline, cap, level fill, number, as a data URL.
var h = 40, level = 72;
var c = document.createElement("canvas"); c.width = 2 * h; c.height = h;
var ctx = c.getContext("2d");
var w = 2 * h - 6;
ctx.lineWidth = 2; ctx.strokeStyle = "rgba(255, 255, 255, 0.9)";
ctx.beginPath(); ctx.roundRect(1, 6, w, h - 12, 6); ctx.stroke();
ctx.fillStyle = "rgba(255, 255, 255, 0.9)";
ctx.beginPath(); ctx.roundRect(w + 2, h / 2 - 5, 3, 10, [0, 2, 2, 0]); ctx.fill();
ctx.fillStyle = level > 20 ? "#4CD964" : "#FF3B30";
ctx.beginPath(); ctx.roundRect(4, 9, (w - 6) * level / 100, h - 18, 3); ctx.fill();
ctx.font = "bold " + (h / 2) + "px Helvetica Neue"; ctx.textAlign = "center"; ctx.textBaseline = "middle";
ctx.fillStyle = "#fff"; ctx.fillText(level, w / 2 + 1, h / 2);
c.toDataURL("image/png")
