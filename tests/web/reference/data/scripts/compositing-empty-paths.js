// fill() and stroke() of paths with nothing to draw, under the operators that reach past what
// is drawn (rows: copy, source-in, source-out, destination-in, destination-atop, then
// source-over). Each panel is a small canvas painted blue and yellow, then given the drawing
// of its column; a panel left transparent was cleared. A fill skips only an empty path and a
// lone line made by moveTo() and lineTo(); a stroke skips a path whose points coincide.
// Columns: fill of an empty path, a start point alone, a lone line, a lone line from lineTo()
// alone, a line there and half way back, a flat rect(), a line from SVG data, a copied Path2D
// line, a line drawn across a change of transform, a square outside the canvas; stroke of an
// empty path, a start point alone, a zero-length line with round caps, two flat rect()s,
// zero-length lines at two points, dashes of zero length, a line clipped out (the left half
// is the clip).
// tolerance: 48 0.005 (a single panel wrong is more than 1 % of what is painted)
var ops = ["copy", "source-in", "source-out", "destination-in", "destination-atop", "source-over"];
function line(p) { p.moveTo(5, 5); p.lineTo(15, 15); return p; }
var drawings = [
  function (x) { x.beginPath(); x.fill(); },
  function (x) { x.beginPath(); x.moveTo(5, 5); x.fill(); },
  function (x) { x.beginPath(); line(x); x.fill(); },
  function (x) { x.beginPath(); x.lineTo(5, 5); x.fill(); },
  function (x) { x.beginPath(); line(x); x.lineTo(10, 10); x.fill(); },
  function (x) { x.beginPath(); x.rect(5, 5, 0, 10); x.fill(); },
  function (x) { x.fill(new Path2D("M5 5L15 15")); },
  function (x) { x.fill(new Path2D(line(new Path2D()))); },
  function (x) { x.beginPath(); x.moveTo(5, 5); x.translate(1, 0); x.lineTo(14, 15); x.fill(); },
  function (x) { x.beginPath(); x.rect(-40, -40, 10, 10); x.fill(); },
  function (x) { x.beginPath(); x.stroke(); },
  function (x) { x.beginPath(); x.moveTo(5, 5); x.stroke(); },
  function (x) { x.lineWidth = 6; x.lineCap = "round"; x.beginPath(); x.moveTo(10, 10); x.lineTo(10, 10); x.stroke(); },
  function (x) { x.lineWidth = 6; x.lineJoin = "round"; x.beginPath(); x.rect(5, 5, 0, 0); x.rect(15, 15, 0, 0); x.stroke(); },
  function (x) { x.beginPath(); x.moveTo(5, 5); x.lineTo(5, 5); x.moveTo(15, 15); x.lineTo(15, 15); x.stroke(); },
  function (x) { x.setLineDash([0, 8]); x.beginPath(); x.moveTo(2, 10); x.lineTo(18, 10); x.stroke(); },
  function (x) { x.beginPath(); x.rect(0, 0, 10, 20); x.clip(); x.beginPath(); x.moveTo(13, 3); x.lineTo(17, 17); x.stroke(); },
];
var c = document.createElement("canvas");
c.width = drawings.length * 22; c.height = ops.length * 22;
var ctx = c.getContext("2d");
ops.forEach(function (op, row) {
  drawings.forEach(function (draw, col) {
    var p = document.createElement("canvas"); p.width = 20; p.height = 20;
    var x = p.getContext("2d");
    x.fillStyle = "rgb(30, 80, 200)"; x.fillRect(0, 0, 20, 20);
    x.fillStyle = "rgb(250, 200, 40)"; x.beginPath(); x.arc(10, 10, 6, 0, 2 * Math.PI); x.fill();
    x.globalCompositeOperation = op;
    x.fillStyle = "rgb(220, 40, 60)"; x.strokeStyle = "rgb(220, 40, 60)";
    draw(x);
    ctx.drawImage(p, col * 22 + 1, row * 22 + 1);
  });
});
c.toDataURL()
