// roundRect with one radius, per-corner radii, elliptic radii, radii too big, negative sizes.
var c = document.createElement("canvas"); c.width = 200; c.height = 120;
var ctx = c.getContext("2d");
ctx.fillStyle = "#3070d0"; ctx.beginPath(); ctx.roundRect(5, 5, 50, 40, 10); ctx.fill();
ctx.fillStyle = "#d07030"; ctx.beginPath(); ctx.roundRect(65, 5, 50, 40, [0, 5, 15, 25]); ctx.fill();
ctx.fillStyle = "#30a050"; ctx.beginPath(); ctx.roundRect(125, 5, 70, 40, [{x: 20, y: 8}]); ctx.fill();
ctx.strokeStyle = "#802080"; ctx.lineWidth = 3;
ctx.beginPath(); ctx.roundRect(10, 60, 50, 40, 100); ctx.stroke();
ctx.beginPath(); ctx.roundRect(120, 100, -50, -40, [15, 3]); ctx.stroke();
ctx.fillStyle = "rgba(0, 0, 0, 0.5)";
ctx.beginPath(); ctx.roundRect(135, 60, 55, 45, [5, 10, 20]); ctx.roundRect(150, 70, 25, 25, 12); ctx.fill("evenodd");
c.toDataURL()
