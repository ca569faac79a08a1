// fillRect and strokeRect that cover nothing, under the operators that reach past what is
// drawn (rows: copy, source-in, source-out, destination-in, destination-atop, then
// source-over). Each panel is a small canvas painted blue and yellow, then given the drawing
// of its column; a panel left transparent was cleared. Columns: zero width, zero height, no
// width nor height (skipped), a width far below a pixel, outside the canvas, clipped out (the
// left half is the clip), a clip that excludes everything, a flat rectangle with a shadow,
// strokeRect with no size (skipped), strokeRect with a line width far below a pixel, a
// non-finite argument (skipped), a transform that cannot be inverted (skipped).
// tolerance: 48 0.005 (a single panel wrong is more than 1 % of what is painted)
var ops = ["copy", "source-in", "source-out", "destination-in", "destination-atop", "source-over"];
var halfClip = function (x) { x.beginPath(); x.rect(0, 0, 10, 20); x.clip(); };
var drawings = [
  function (x) { x.fillRect(6, 4, 0, 12); },
  function (x) { x.fillRect(4, 6, 12, 0); },
  function (x) { x.fillRect(6, 6, 0, 0); },
  function (x) { x.fillRect(6, 4, 1e-9, 12); },
  function (x) { x.fillRect(-40, -40, 10, 10); },
  function (x) { halfClip(x); x.fillRect(12, 12, 6, 6); },
  function (x) { x.beginPath(); x.rect(0, 0, 0, 0); x.clip(); x.fillRect(2, 2, 16, 16); },
  function (x) { x.shadowColor = "#0c0"; x.shadowOffsetX = 4; x.shadowBlur = 2; x.fillRect(6, 4, 0, 12); },
  function (x) { x.lineWidth = 4; x.lineJoin = "round"; x.strokeRect(10, 10, 0, 0); },
  function (x) { x.lineWidth = 1e-9; x.strokeRect(4, 4, 12, 12); },
  function (x) { x.fillRect(4, 4, NaN, 12); },
  function (x) { x.scale(0, 1); x.fillRect(4, 4, 12, 12); },
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
