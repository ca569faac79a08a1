// Clips by rectangle, circle and even-odd shape; clips intersect and save/restore lifts them.
var c = document.createElement("canvas"); c.width = 180; c.height = 120;
var ctx = c.getContext("2d");
ctx.save();
ctx.beginPath(); ctx.arc(45, 45, 35, 0, 2 * Math.PI); ctx.clip();
ctx.fillStyle = "#2060c0"; ctx.fillRect(0, 0, 90, 90);
ctx.beginPath(); ctx.rect(30, 0, 60, 120); ctx.clip();
ctx.fillStyle = "#e0a020"; ctx.fillRect(0, 0, 90, 90);
ctx.restore();
ctx.fillStyle = "rgba(0, 0, 0, 0.2)"; ctx.fillRect(0, 95, 90, 20);
ctx.save();
ctx.beginPath(); ctx.rect(100, 10, 70, 70); ctx.rect(115, 25, 40, 40); ctx.clip("evenodd");
var g = ctx.createLinearGradient(100, 10, 170, 80);
g.addColorStop(0, "#c02040"); g.addColorStop(1, "#40c020");
ctx.fillStyle = g; ctx.fillRect(90, 0, 90, 90);
ctx.restore();
ctx.save();
ctx.translate(135, 100); ctx.rotate(Math.PI / 4);
ctx.beginPath(); ctx.rect(-12, -12, 24, 24); ctx.clip();
ctx.resetTransform();
ctx.fillStyle = "#6030a0"; ctx.fillRect(100, 80, 70, 40);
ctx.restore();
c.toDataURL()
