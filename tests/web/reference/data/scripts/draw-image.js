// drawImage with 3, 5 and 9 arguments from a canvas source, flipped by a negative scale,
// with smoothing on and off, and a source rectangle partly outside the source.
var src = document.createElement("canvas"); src.width = 16; src.height = 12;
var s = src.getContext("2d");
s.fillStyle = "#2050c0"; s.fillRect(0, 0, 16, 12);
s.fillStyle = "#f0d000"; s.fillRect(0, 0, 8, 6);
s.fillStyle = "#c02020"; s.fillRect(8, 6, 8, 6);
s.fillStyle = "#fff"; s.fillRect(3, 3, 2, 2);
var c = document.createElement("canvas"); c.width = 200; c.height = 100;
var ctx = c.getContext("2d");
ctx.drawImage(src, 4, 4);
ctx.drawImage(src, 26, 4, 40, 30);
ctx.imageSmoothingEnabled = false;
ctx.drawImage(src, 72, 4, 48, 36);
ctx.imageSmoothingEnabled = true;
ctx.drawImage(src, 8, 6, 8, 6, 126, 4, 32, 24);
ctx.drawImage(src, 4, 2, 20, 20, 164, 4, 30, 30);
ctx.save(); ctx.translate(60, 50); ctx.scale(-1, 1); ctx.drawImage(src, 0, 0, 32, 24); ctx.restore();
ctx.globalAlpha = 0.5; ctx.drawImage(src, 70, 50, 32, 24); ctx.globalAlpha = 1;
ctx.save(); ctx.translate(150, 70); ctx.rotate(Math.PI / 5); ctx.drawImage(src, -16, -12, 32, 24); ctx.restore();
c.toDataURL()
