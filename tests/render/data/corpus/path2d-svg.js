(px, level, charging, low, rgb) {
  // Drawn on a 48 x 24 design grid with SVG path strings, then scaled to the pixel height.
  var canvas = document.createElement('canvas');
  var ctx = canvas.getContext('2d');
  var unit = px / 24;
  canvas.width = Math.round(48 * unit);
  canvas.height = px;
  ctx.scale(unit, unit);

  var body = new Path2D('M6 5h32a4 4 0 0 1 4 4v6a4 4 0 0 1-4 4H6a4 4 0 0 1-4-4V9a4 4 0 0 1 4-4z');
  var hole = new Path2D('M7 7.5H37a2.5 2.5 0 0 1 2.5 2.5V14A2.5 2.5 0 0 1 37 16.5H7A2.5 2.5 0 0 1 4.5 14V10A2.5 2.5 0 0 1 7 7.5Z');
  var cap = new Path2D('M43.5 9.5c1.5 0 2.5 1 2.5 2.5s-1 2.5-2.5 2.5z');
  var bolt = new Path2D('M24 3 L16 13.5 h6 l-2 7.5 l8-10.5 h-6 z');

  var frame = new Path2D();
  frame.addPath(body);
  frame.addPath(hole);
  ctx.fillStyle = 'rgb(' + rgb.join(',') + ')';
  ctx.fill(frame, 'evenodd');
  ctx.fill(cap);

  var fill = new Path2D();
  var w = 31 * Math.max(0, Math.min(100, level)) / 100;
  fill.moveTo(6.5, 9);
  fill.quadraticCurveTo(6, 9, 6, 9.5);
  fill.lineTo(6, 14.5);
  fill.quadraticCurveTo(6, 15, 6.5, 15);
  fill.lineTo(6.5 + w, 15);
  fill.lineTo(6.5 + w, 9);
  fill.closePath();
  ctx.fillStyle = low ? '#ff3b30' : charging ? '#34c759' : ctx.fillStyle;
  if (w > 0) ctx.fill(fill);

  if (charging) {
    ctx.lineWidth = 2;
    ctx.lineJoin = 'round';
    ctx.globalCompositeOperation = 'destination-out';
    ctx.stroke(bolt);
    ctx.globalCompositeOperation = 'source-over';
    ctx.fillStyle = 'rgb(' + rgb.join(',') + ')';
    ctx.fill(bolt);
  }
  // A small leaf shaped mark in the corner, with smooth curves and a transformed copy.
  var leaf = new Path2D('M0 0 C2 -2 4 -2 6 0 S4 2 0 0 Z');
  var marks = new Path2D();
  marks.addPath(leaf, new DOMMatrix().translate(2, 21).scale(0.5));
  marks.addPath(leaf, new DOMMatrix([0.5, 0, 0, -0.5, 6, 21]));
  ctx.fill(marks);
  return canvas.toDataURL('image/png');
}
