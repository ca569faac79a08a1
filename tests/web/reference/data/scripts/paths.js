// Straight paths: rect, subpaths, closePath, both fill rules, fill then stroke.
var c = document.createElement("canvas"); c.width = 160; c.height = 120;
var ctx = c.getContext("2d");
ctx.fillStyle = "#3060c0";
ctx.beginPath();
ctx.rect(8, 8, 40, 30);
ctx.rect(20, 20, 40, 30);
ctx.fill();
ctx.fillStyle = "#c03030";
ctx.beginPath();
ctx.moveTo(80, 10); ctx.lineTo(150, 10); ctx.lineTo(150, 50); ctx.lineTo(80, 50); ctx.closePath();
ctx.moveTo(95, 20); ctx.lineTo(95, 40); ctx.lineTo(135, 40); ctx.lineTo(135, 20); ctx.closePath();
ctx.fill("evenodd");
ctx.beginPath();
ctx.moveTo(40, 110);
for (var i = 0; i < 5; i++) {
  var a = -Math.PI / 2 + i * 4 * Math.PI / 5;
  ctx.lineTo(40 + 34 * Math.cos(a), 80 + 34 * Math.sin(a));
}
ctx.closePath();
ctx.fillStyle = "rgba(40, 160, 60, 0.8)";
ctx.fill("nonzero");
ctx.lineWidth = 3;
ctx.strokeStyle = "#202020";
ctx.stroke();
ctx.translate(120, 80);
ctx.beginPath();
for (var j = 0; j < 5; j++) {
  var b = -Math.PI / 2 + j * 4 * Math.PI / 5;
  ctx.lineTo(34 * Math.cos(b), 34 * Math.sin(b));
}
ctx.closePath();
ctx.fillStyle = "#8040a0";
ctx.fill("evenodd");
ctx.strokeRect(-30.5, -30.5, 10, 10);
ctx.clearRect(-5, -5, 10, 10);
c.toDataURL()
