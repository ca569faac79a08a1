(height, level, charging, low, rgb) {
  var c = document.createElement('canvas'), g = c.getContext('2d');
  c.width = Math.round(height * 1.5);
  c.height = height;
  var col = 'rgb(' + rgb + ')';
  var lw = Math.max(1, Math.round(height / 20));
  var top = Math.round(height * 0.25) + lw / 2, bottom = Math.round(height * 0.75) - lw / 2;
  var right = Math.round(height * 1.3) - lw / 2;

  // Dashed case with square caps and mitred corners.
  g.lineWidth = lw;
  g.strokeStyle = 'rgba(' + rgb + ',0.5)';
  g.setLineDash([lw * 3, lw * 2]);
  g.lineCap = 'square';
  g.lineJoin = 'miter';
  g.miterLimit = 4;
  g.strokeRect(lw / 2, top, right - lw / 2, bottom - top);

  // The fill is a heavy dashed line; the dash pattern is read back and doubled.
  var pattern = g.getLineDash();
  g.setLineDash(pattern.concat([lw]));
  g.lineDashOffset = -lw;
  g.lineCap = 'butt';
  g.lineWidth = bottom - top - lw * 3;
  g.strokeStyle = charging ? '#34c759' : low ? '#ff3b30' : col;
  g.beginPath();
  g.moveTo(lw * 2, height / 2);
  g.lineTo(lw * 2 + (right - lw * 3) * level / 100, height / 2);
  g.stroke();

  // Round dots for the terminal, bevelled zig-zag under the case.
  g.setLineDash([0, lw * 2]);
  g.lineCap = 'round';
  g.lineWidth = lw * 1.5;
  g.strokeStyle = col;
  g.beginPath();
  g.moveTo(right + lw * 2, height * 0.4);
  g.lineTo(right + lw * 2, height * 0.6);
  g.stroke();
  g.setLineDash([]);
  g.lineJoin = 'bevel';
  g.lineWidth = lw;
  g.beginPath();
  for (var i = 0; i <= 10; i++) {
    g.lineTo(lw + i * right / 10, height * 0.88 + (i % 2 ? -lw : lw));
  }
  g.stroke();
  g.lineJoin = 'round';
  g.setLineDash([lw * 4, -1]);
  g.beginPath();
  g.moveTo(0, height * 0.1);
  g.lineTo(c.width, height * 0.1);
  g.stroke();
  return c.toDataURL('image/png');
}
