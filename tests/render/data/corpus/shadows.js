(h, level, charging, low, rgb) {
  var canvas = document.createElement('canvas'), ctx = canvas.getContext('2d');
  canvas.width = Math.round(h * 1.4);
  canvas.height = h;
  var colour = 'rgb(' + rgb + ')';
  var bodyH = Math.round(h * 0.5), bodyW = Math.round(h * 1.05), top = Math.round(h * 0.2);

  // Soft drop shadow under the case.
  ctx.shadowColor = 'rgba(0,0,0,0.45)';
  ctx.shadowBlur = h / 10;
  ctx.shadowOffsetX = 0;
  ctx.shadowOffsetY = h / 20;
  ctx.fillStyle = 'rgba(' + rgb + ',0.3)';
  ctx.fillRect(h / 10, top, bodyW, bodyH);

  // Glow around the fill, in the state colour, with no offset.
  var tint = charging ? '#34c759' : low ? '#ff3b30' : colour;
  ctx.shadowColor = tint;
  ctx.shadowBlur = h / 6;
  ctx.shadowOffsetY = 0;
  ctx.fillStyle = tint;
  ctx.fillRect(h / 10 + 2, top + 2, (bodyW - 4) * level / 100, bodyH - 4);

  // Text with a hard offset shadow and no blur.
  ctx.shadowBlur = 0;
  ctx.shadowOffsetX = 1;
  ctx.shadowOffsetY = 1;
  ctx.shadowColor = 'rgba(128,128,128,0.8)';
  ctx.fillStyle = colour;
  ctx.font = 'bold ' + Math.round(h * 0.25) + 'px Arial, sans-serif';
  ctx.textAlign = 'left';
  ctx.fillText(level + '%', h / 10, h * 0.95);

  // A stroked cap with a blurred shadow; a transparent shadow colour draws no shadow.
  ctx.shadowBlur = 3;
  ctx.shadowOffsetX = 2;
  ctx.strokeStyle = colour;
  ctx.lineWidth = 2;
  ctx.strokeRect(h / 10 + bodyW + 3, top + bodyH / 3, 3, bodyH / 3);
  ctx.shadowColor = 'transparent';
  ctx.fillRect(canvas.width - 4, 0, 4, 4);
  return canvas.toDataURL('image/png');
}
