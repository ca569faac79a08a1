// Patterns from a small canvas in every repetition, one under a transform.
var tile = document.createElement("canvas"); tile.width = 10; tile.height = 10;
var t = tile.getContext("2d");
t.fillStyle = "#f0c000"; t.fillRect(0, 0, 10, 10);
t.fillStyle = "#2040a0"; t.fillRect(0, 0, 5, 5); t.fillRect(5, 5, 5, 5);
var c = document.createElement("canvas"); c.width = 200; c.height = 110;
var ctx = c.getContext("2d");
ctx.fillStyle = ctx.createPattern(tile, "repeat"); ctx.fillRect(5, 5, 45, 45);
ctx.fillStyle = ctx.createPattern(tile, "repeat-x"); ctx.fillRect(55, 5, 45, 45);
ctx.fillStyle = ctx.createPattern(tile, "repeat-y"); ctx.fillRect(105, 5, 45, 45);
ctx.fillStyle = ctx.createPattern(tile, "no-repeat"); ctx.fillRect(155, 5, 40, 45);
var p = ctx.createPattern(tile, "repeat");
p.setTransform(new DOMMatrix().rotate(30).scale(1.5));
ctx.fillStyle = p; ctx.beginPath(); ctx.arc(40, 80, 25, 0, 2 * Math.PI); ctx.fill();
ctx.translate(120, 60); ctx.rotate(0.3);
ctx.strokeStyle = ctx.createPattern(tile, "repeat"); ctx.lineWidth = 12;
ctx.strokeRect(0, 5, 60, 30);
c.toDataURL()
