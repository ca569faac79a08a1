// drawImage, putImageData, fillText and strokeText that cover nothing, under the operators
// that reach past what is drawn (rows: copy, source-in, source-out, destination-in,
// destination-atop, then source-over). Each panel is a small canvas painted blue and yellow,
// then given the drawing of its column; a panel left transparent was cleared. Columns:
// drawImage with zero destination width, zero source height, a source rectangle outside the
// image (all skipped), a destination outside the canvas, clipped out (the left half is the
// clip), an image of transparent pixels; putImageData with a dirty rectangle of zero width,
// and a green block put whatever the operator; fillText of an empty string, of spaces, at a
// zero font size, with a maximum width of 0 (skipped), outside the canvas; strokeText of an
// empty string, and with a maximum width of 0 (skipped).
// tolerance: 48 0.005 (a single panel wrong is more than 1 % of what is painted)
var ops = ["copy", "source-in", "source-out", "destination-in", "destination-atop", "source-over"];
var red = document.createElement("canvas"); red.width = 10; red.height = 10;
var rx = red.getContext("2d"); rx.fillStyle = "rgb(220, 40, 60)"; rx.fillRect(0, 0, 10, 10);
var clear = document.createElement("canvas"); clear.width = 6; clear.height = 6;
var drawings = [
  function (x) { x.drawImage(red, 5, 5, 0, 10); },
  function (x) { x.drawImage(red, 0, 0, 10, 0, 5, 5, 10, 10); },
  function (x) { x.drawImage(red, 20, 20, 5, 5, 5, 5, 10, 10); },
  function (x) { x.drawImage(red, -40, -40); },
  function (x) { x.beginPath(); x.rect(0, 0, 10, 20); x.clip(); x.drawImage(red, 12, 12, 6, 6); },
  function (x) { x.drawImage(clear, 7, 7); },
  function (x) { x.putImageData(x.createImageData(4, 4), 5, 5, 0, 0, 0, 4); },
  function (x) {
    var block = x.createImageData(6, 6);
    for (var i = 0; i < block.data.length; i += 4) { block.data[i + 1] = 160; block.data[i + 3] = 255; }
    x.putImageData(block, 7, 7);
  },
  function (x) { x.fillText("", 4, 14); },
  function (x) { x.fillText("   ", 4, 14); },
  function (x) { x.font = "0px sans-serif"; x.fillText("Ab", 4, 14); },
  function (x) { x.fillText("Ab", 4, 14, 0); },
  function (x) { x.fillText("Ab", -40, -40); },
  function (x) { x.strokeText("", 4, 14); },
  function (x) { x.strokeText("Ab", 4, 14, 0); },
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
    x.font = "12px sans-serif";
    draw(x);
    ctx.drawImage(p, col * 22 + 1, row * 22 + 1);
  });
});
c.toDataURL()
