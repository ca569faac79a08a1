// createImageData, putImageData whole and with a dirty rectangle, getImageData read back and
// altered (put ignores the transform, alpha and compositing).
var c = document.createElement("canvas"); c.width = 120; c.height = 80;
var ctx = c.getContext("2d");
var img = ctx.createImageData(30, 20);
for (var y = 0; y < 20; y++) for (var x = 0; x < 30; x++) {
  var i = (y * 30 + x) * 4;
  img.data[i] = x * 8; img.data[i + 1] = y * 12; img.data[i + 2] = 160; img.data[i + 3] = 255 - x * 4;
}
ctx.translate(50, 50); ctx.globalAlpha = 0.3;
ctx.putImageData(img, 5, 5);
ctx.putImageData(img, 40, 5, 10, 5, 15, 10);
ctx.globalAlpha = 1; ctx.resetTransform();
ctx.fillStyle = "#30a050"; ctx.fillRect(5, 40, 40, 30);
ctx.fillStyle = "rgba(200, 0, 0, 0.5)"; ctx.fillRect(25, 50, 40, 25);
var back = ctx.getImageData(5, 40, 60, 35);
for (var j = 0; j < back.data.length; j += 4) {
  back.data[j] = 255 - back.data[j];
  back.data[j + 2] = back.data[j + 3] ? 255 : 0;
}
ctx.putImageData(back, 60, 40);
ctx.putImageData(ctx.getImageData(-10, -10, 30, 30), 90, 5);
c.toDataURL()
