(height, level, isCharging, isLow, isLowPower, mainColor, baseColor) {
  // A rounded battery drawn with little helpers, the way I like to keep things tidy.
  var canvas = document.createElement("canvas");
  var context = canvas.getContext("2d");

  function toRgba(components, alpha) {
    var a = alpha === undefined ? (components.length > 3 ? components[3] : 1) : alpha;
    return "rgba(" + components[0] + ", " + components[1] + ", " + components[2] + ", " + a + ")";
  }

  function roundedRectangle(ctx, x, y, width, height, radius) {
    ctx.beginPath();
    ctx.moveTo(x + radius, y);
    ctx.lineTo(x + width - radius, y);
    ctx.quadraticCurveTo(x + width, y, x + width, y + radius);
    ctx.lineTo(x + width, y + height - radius);
    ctx.quadraticCurveTo(x + width, y + height, x + width - radius, y + height);
    ctx.lineTo(x + radius, y + height);
    ctx.quadraticCurveTo(x, y + height, x, y + height - radius);
    ctx.lineTo(x, y + radius);
    ctx.quadraticCurveTo(x, y, x + radius, y);
    ctx.closePath();
  }

  function chooseFillColour() {
    if (isLowPower) {
      return "#FFCC00";
    }
    if (isCharging) {
      return "#4CD964";
    }
    if (isLow) {
      return "#FF3B30";
    }
    return toRgba(mainColor, 1);
  }

  function drawTerminal(x, y, width, height) {
    context.fillStyle = toRgba(baseColor);
    context.beginPath();
    context.moveTo(x, y);
    context.lineTo(x + width * 0.5, y);
    context.arc(x + width * 0.5, y + height / 2, height / 2, -Math.PI / 2, Math.PI / 2, false);
    context.lineTo(x, y + height);
    context.closePath();
    context.fill();
  }

  var bodyHeight = Math.round(height * 0.55);
  var bodyWidth = Math.round(bodyHeight * 2.1);
  var lineWidth = Math.max(1, Math.round(height / 24));
  var padding = lineWidth * 2;
  canvas.width = bodyWidth + lineWidth * 4;
  canvas.height = height;

  var top = Math.round((height - bodyHeight) / 2);
  context.lineWidth = lineWidth;
  context.strokeStyle = toRgba(baseColor);
  roundedRectangle(context, lineWidth / 2, top + lineWidth / 2, bodyWidth - lineWidth, bodyHeight - lineWidth, bodyHeight / 4);
  context.stroke();
  drawTerminal(bodyWidth + lineWidth, top + bodyHeight * 0.3, lineWidth * 3, bodyHeight * 0.4);

  var innerWidth = bodyWidth - padding * 2;
  var filled = Math.max(0, Math.min(1, level / 100)) * innerWidth;
  context.fillStyle = chooseFillColour();
  roundedRectangle(context, padding, top + padding, Math.max(filled, 2), bodyHeight - padding * 2, Math.min(bodyHeight / 8, filled / 2 + 1));
  context.fill();

  return canvas.toDataURL("image/png");
}
