// translate, rotate, scale (also negative), transform, setTransform in both forms, reset, save/restore.
var c = document.createElement("canvas"); c.width = 180; c.height = 120;
var ctx = c.getContext("2d");
function mark(color) {
  ctx.fillStyle = color; ctx.fillRect(0, 0, 20, 10);
  ctx.fillStyle = "#000"; ctx.fillRect(0, 0, 4, 4);
}
ctx.save();
ctx.translate(20, 20); mark("#d03030");
ctx.translate(40, 0); ctx.rotate(Math.PI / 6); mark("#30a030");
ctx.restore();
ctx.save();
ctx.translate(120, 10); ctx.scale(2, 1.5); mark("#3030d0");
ctx.restore();
ctx.save();
ctx.translate(60, 70); ctx.scale(-1, 1); mark("#d0a000");
ctx.restore();
ctx.save();
ctx.transform(1, 0.3, -0.5, 1, 100, 60); mark("#a000a0");
ctx.setTransform(1.5, 0, 0, 1.5, 20, 80); mark("#00a0a0");
ctx.setTransform(new DOMMatrix([1, -0.2, 0.2, 1, 140, 90])); mark("#606060");
ctx.resetTransform(); ctx.fillStyle = "rgba(0, 0, 0, 0.3)"; ctx.fillRect(160, 100, 15, 15);
ctx.restore();
ctx.translate(150, 60); ctx.rotate(-Math.PI / 2); ctx.scale(0.5, 0.5);
ctx.lineWidth = 6; ctx.strokeStyle = "#c06000"; ctx.strokeRect(0, 0, 40, 40);
c.toDataURL()
