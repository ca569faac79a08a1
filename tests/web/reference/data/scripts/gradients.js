// Linear, radial (concentric and offset focus) and conic gradients, with transparent stops.
var c = document.createElement("canvas"); c.width = 200; c.height = 120;
var ctx = c.getContext("2d");
var g = ctx.createLinearGradient(10, 0, 90, 0);
g.addColorStop(0, "#ff0000"); g.addColorStop(0.5, "rgba(0, 255, 0, 0.5)"); g.addColorStop(1, "#0000ff");
ctx.fillStyle = g; ctx.fillRect(0, 0, 100, 50);
var d = ctx.createLinearGradient(100, 0, 200, 50);
d.addColorStop(0, "white"); d.addColorStop(0.3, "orange"); d.addColorStop(0.3, "purple"); d.addColorStop(1, "black");
ctx.fillStyle = d; ctx.fillRect(100, 0, 100, 50);
var r = ctx.createRadialGradient(40, 85, 5, 40, 85, 35);
r.addColorStop(0, "yellow"); r.addColorStop(1, "rgba(0, 0, 128, 0)");
ctx.fillStyle = r; ctx.fillRect(0, 50, 80, 70);
var f = ctx.createRadialGradient(115, 75, 2, 125, 85, 30);
f.addColorStop(0, "#fff"); f.addColorStop(0.7, "#08c"); f.addColorStop(1, "#024");
ctx.fillStyle = f; ctx.beginPath(); ctx.arc(125, 85, 30, 0, 2 * Math.PI); ctx.fill();
var k = ctx.createConicGradient(Math.PI / 4, 178, 85);
k.addColorStop(0, "red"); k.addColorStop(0.33, "lime"); k.addColorStop(0.66, "blue"); k.addColorStop(1, "red");
ctx.strokeStyle = k; ctx.lineWidth = 8; ctx.beginPath(); ctx.arc(178, 85, 15, 0, 2 * Math.PI); ctx.stroke();
c.toDataURL()
