// Caps, joins, miter limit, dashes with offset, and thin lines on and off pixel centres.
var c = document.createElement("canvas"); c.width = 200; c.height = 140;
var ctx = c.getContext("2d");
ctx.strokeStyle = "#203040";
ctx.lineWidth = 10;
["butt", "round", "square"].forEach(function (cap, i) {
  ctx.lineCap = cap;
  ctx.beginPath(); ctx.moveTo(15, 15 + i * 20); ctx.lineTo(70, 15 + i * 20); ctx.stroke();
});
ctx.lineCap = "butt";
["miter", "round", "bevel"].forEach(function (join, i) {
  ctx.lineJoin = join;
  ctx.beginPath(); ctx.moveTo(90 + i * 35, 50); ctx.lineTo(103 + i * 35, 12); ctx.lineTo(116 + i * 35, 50); ctx.stroke();
});
ctx.lineJoin = "miter"; ctx.lineWidth = 6; ctx.miterLimit = 2;
ctx.beginPath(); ctx.moveTo(15, 95); ctx.lineTo(40, 70); ctx.lineTo(65, 95); ctx.stroke();
ctx.miterLimit = 10;
ctx.beginPath(); ctx.moveTo(15, 130); ctx.lineTo(40, 105); ctx.lineTo(65, 130); ctx.stroke();
ctx.lineWidth = 3; ctx.strokeStyle = "#c03000";
ctx.setLineDash([12, 4, 3, 4]);
ctx.beginPath(); ctx.moveTo(85, 75); ctx.lineTo(190, 75); ctx.stroke();
ctx.lineDashOffset = 7;
ctx.beginPath(); ctx.moveTo(85, 85); ctx.lineTo(190, 85); ctx.stroke();
ctx.setLineDash([5, 3, 2]);
ctx.lineCap = "round";
ctx.beginPath(); ctx.arc(137, 112, 20, 0, Math.PI * 2); ctx.stroke();
ctx.setLineDash([]); ctx.lineCap = "butt"; ctx.lineWidth = 1; ctx.strokeStyle = "#000";
ctx.beginPath(); ctx.moveTo(80, 60.5); ctx.lineTo(195, 60.5); ctx.stroke();
ctx.beginPath(); ctx.moveTo(80, 65); ctx.lineTo(195, 65); ctx.stroke();
c.toDataURL()
