// Blurred and sharp shadows under fills, strokes and text; a shadow ignores the transform's scale.
var c = document.createElement("canvas"); c.width = 200; c.height = 120;
var ctx = c.getContext("2d");
ctx.shadowColor = "rgba(0, 0, 0, 0.6)"; ctx.shadowBlur = 6; ctx.shadowOffsetX = 4; ctx.shadowOffsetY = 4;
ctx.fillStyle = "#3070e0"; ctx.fillRect(10, 10, 50, 35);
ctx.shadowColor = "#e02020"; ctx.shadowBlur = 0; ctx.shadowOffsetX = 6; ctx.shadowOffsetY = -3;
ctx.strokeStyle = "#208020"; ctx.lineWidth = 4;
ctx.beginPath(); ctx.arc(110, 30, 18, 0, 2 * Math.PI); ctx.stroke();
ctx.shadowColor = "rgba(0, 0, 160, 0.8)"; ctx.shadowBlur = 12; ctx.shadowOffsetX = 0; ctx.shadowOffsetY = 0;
ctx.fillStyle = "#ffd000"; ctx.beginPath(); ctx.moveTo(150, 10); ctx.lineTo(190, 50); ctx.lineTo(150, 50); ctx.fill();
ctx.save();
ctx.scale(2, 2);
ctx.shadowColor = "rgba(0, 0, 0, 0.5)"; ctx.shadowBlur = 3; ctx.shadowOffsetX = 3; ctx.shadowOffsetY = 3;
ctx.fillStyle = "#a050c0"; ctx.fillRect(8, 35, 20, 15);
ctx.restore();
ctx.shadowColor = "rgba(0, 80, 0, 0.7)"; ctx.shadowBlur = 2; ctx.shadowOffsetX = 2; ctx.shadowOffsetY = 2;
ctx.fillStyle = "#000"; ctx.font = "bold 26px sans-serif"; ctx.fillText("Sh", 80, 100);
ctx.shadowColor = "transparent"; ctx.fillStyle = "#e07000"; ctx.fillRect(140, 70, 40, 40);
c.toDataURL()
