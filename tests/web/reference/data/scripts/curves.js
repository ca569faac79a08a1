// Quadratic and cubic Béziers, stroked and filled, including a self-crossing loop.
var c = document.createElement("canvas"); c.width = 180; c.height = 120;
var ctx = c.getContext("2d");
ctx.lineWidth = 3;
ctx.strokeStyle = "#2050d0";
ctx.beginPath(); ctx.moveTo(10, 60); ctx.quadraticCurveTo(45, -10, 80, 60); ctx.quadraticCurveTo(115, 130, 170, 60); ctx.stroke();
ctx.fillStyle = "rgba(220, 60, 40, 0.75)";
ctx.beginPath(); ctx.moveTo(20, 110); ctx.bezierCurveTo(20, 70, 90, 70, 90, 110); ctx.closePath(); ctx.fill();
ctx.strokeStyle = "#107030"; ctx.lineWidth = 2;
ctx.beginPath(); ctx.moveTo(100, 110); ctx.bezierCurveTo(190, 40, 90, 40, 170, 110); ctx.stroke();
ctx.fillStyle = "#e0b020";
ctx.beginPath(); ctx.moveTo(110, 20); ctx.bezierCurveTo(180, 0, 100, 50, 170, 30); ctx.lineTo(170, 10); ctx.fill();
c.toDataURL()
