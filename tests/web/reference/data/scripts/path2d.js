// Path2D from SVG path data (absolute and relative commands, arcs, smooth curves, implicit
// repeats), built by methods, combined with addPath under a matrix, filled and stroked.
var c = document.createElement("canvas"); c.width = 200; c.height = 130;
var ctx = c.getContext("2d");
var box = new Path2D("M10 10 h 50 v 40 h -50 Z m 10 10 l 30 0 0 20 -30 0 z");
ctx.fillStyle = "#3060c0"; ctx.fill(box, "evenodd");
var arcs = new Path2D("M80 50 A 20 20 0 0 1 120 50 a20,20 0 1,0 40,0");
ctx.lineWidth = 3; ctx.strokeStyle = "#c03030"; ctx.stroke(arcs);
var curves = new Path2D("M10 80 C 20 60, 40 60, 50 80 S 80 100, 90 80 Q 100 60 110 80 T 130 80 T150 80");
ctx.strokeStyle = "#208030"; ctx.stroke(curves);
var heart = new Path2D();
heart.moveTo(20, 5); heart.bezierCurveTo(20, 0, 0, 0, 0, 10); heart.bezierCurveTo(0, 20, 20, 25, 20, 35);
heart.bezierCurveTo(20, 25, 40, 20, 40, 10); heart.bezierCurveTo(40, 0, 20, 0, 20, 5);
var both = new Path2D(heart);
both.addPath(heart, new DOMMatrix([0.6, 0, 0, 0.6, 50, 5]));
ctx.translate(150, 90);
ctx.fillStyle = "rgba(220, 40, 120, 0.8)"; ctx.fill(both);
ctx.resetTransform();
var bad = new Path2D("M 170 10 L 190 10 L 190 X 30");
ctx.strokeStyle = "#000"; ctx.lineWidth = 2; ctx.stroke(bad);
ctx.fillStyle = "#806000"; ctx.fill(new Path2D("M10,100l20,0l0,20z M40 100 H60 V120 H40 z"));
c.toDataURL()
