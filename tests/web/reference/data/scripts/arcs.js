// arc in both directions and past a full turn, arcTo corners, ellipse with rotation.
var c = document.createElement("canvas"); c.width = 180; c.height = 120;
var ctx = c.getContext("2d");
ctx.lineWidth = 4;
ctx.strokeStyle = "#1060b0";
ctx.beginPath(); ctx.arc(30, 30, 20, 0, Math.PI * 1.5); ctx.stroke();
ctx.strokeStyle = "#b01060";
ctx.beginPath(); ctx.arc(80, 30, 20, 0, Math.PI * 1.5, true); ctx.stroke();
ctx.fillStyle = "#10a060";
ctx.beginPath(); ctx.moveTo(130, 30); ctx.arc(130, 30, 22, -Math.PI / 4, Math.PI / 4, true); ctx.closePath(); ctx.fill();
ctx.beginPath(); ctx.arc(30, 85, 18, 0, 7 * Math.PI); ctx.strokeStyle = "#404040"; ctx.stroke();
ctx.strokeStyle = "#d07000"; ctx.lineWidth = 3;
ctx.beginPath(); ctx.moveTo(60, 110); ctx.arcTo(60, 60, 110, 60, 20); ctx.arcTo(110, 60, 110, 110, 40); ctx.lineTo(110, 110); ctx.stroke();
ctx.fillStyle = "rgba(90, 40, 200, 0.7)";
ctx.beginPath(); ctx.ellipse(150, 88, 25, 12, Math.PI / 6, 0, Math.PI * 2); ctx.fill();
ctx.strokeStyle = "#000"; ctx.lineWidth = 2;
ctx.beginPath(); ctx.ellipse(150, 88, 25, 12, Math.PI / 6, Math.PI, Math.PI * 1.75, false); ctx.stroke();
c.toDataURL()
