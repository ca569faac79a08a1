(height, level, charging, low, lpm, rgb, base) {
  // Every stripe uses another way of writing a colour; bad ones leave the previous colour.
  var canvas = document.createElement("canvas");
  var ctx = canvas.getContext("2d");
  var styles = [
    "red", "#0f0", "#00f8", "#12345678", "#ABCDEF",
    "rgb(255 128 0)", "rgb(100%, 50%, 0%)", "rgba(0, 0, 255, .5)", "rgb(0 128 255 / 40%)",
    "hsl(120, 100%, 25%)", "hsla(300 60% 50% / 0.7)", "hsl(0.5turn 80% 40%)",
    "transparent", "currentcolor", "RebeccaPurple", "not a colour", "#12", "rgb(300, -20, 12.6)"
  ];
  var stripe = Math.max(2, Math.round(height / 10));
  canvas.width = stripe * styles.length;
  canvas.height = height;
  for (var i = 0; i < styles.length; i++) {
    ctx.fillStyle = "rgb(" + rgb.join(",") + ")";
    ctx.fillStyle = styles[i];
    ctx.fillRect(i * stripe, 0, stripe, height / 2);
  }
  // Whatever fillStyle reads back is itself a valid colour.
  ctx.fillStyle = "hsl(200 100% 50%)";
  var echoed = ctx.fillStyle;
  ctx.fillStyle = echoed;
  ctx.fillRect(0, height / 2, stripe * 2, stripe);

  // The level bar with globalAlpha multiplied into an alpha colour.
  ctx.globalAlpha = 0.6;
  ctx.fillStyle = "rgba(" + base.join(",") + ")";
  ctx.fillRect(0, height * 0.7, canvas.width, height * 0.2);
  ctx.globalAlpha = 2;
  ctx.fillStyle = lpm ? "#FFCC00" : charging ? "#4CD964" : low ? "#FF3B30" : "rgb(" + rgb.join(",") + ")";
  ctx.fillRect(0, height * 0.7, canvas.width * level / 100, height * 0.2);
  ctx.globalAlpha = -1;
  ctx.fillRect(canvas.width - stripe, height - stripe, stripe, stripe);
  return canvas.toDataURL("image/png");
}
