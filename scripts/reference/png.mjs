// Reads the PNG files the two engines write (8-bit RGBA or RGB, not interlaced) into
// { width, height, data } with four bytes a pixel, as ImageData holds them.
import zlib from 'node:zlib';

function paeth(a, b, c) {
  const p = a + b - c;
  const pa = Math.abs(p - a), pb = Math.abs(p - b), pc = Math.abs(p - c);
  return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
}

export function decodePNG(bytes) {
  if (bytes.length < 8 || bytes.readUInt32BE(0) !== 0x89504e47) throw new Error('not a PNG file');
  let offset = 8, width = 0, height = 0, colourType = -1;
  const chunks = [];
  while (offset + 8 <= bytes.length) {
    const length = bytes.readUInt32BE(offset);
    const type = bytes.toString('latin1', offset + 4, offset + 8);
    const body = bytes.subarray(offset + 8, offset + 8 + length);
    if (type === 'IHDR') {
      width = body.readUInt32BE(0);
      height = body.readUInt32BE(4);
      colourType = body[9];
      if (body[8] !== 8 || (colourType !== 6 && colourType !== 2) || body[12] !== 0) {
        throw new Error('only 8-bit RGB(A) PNG files without interlacing are read');
      }
    } else if (type === 'IDAT') {
      chunks.push(body);
    } else if (type === 'IEND') {
      break;
    }
    offset += 12 + length;
  }
  if (!width || !height) throw new Error('PNG file without a header');
  const channels = colourType === 6 ? 4 : 3;
  const raw = zlib.inflateSync(Buffer.concat(chunks));
  const stride = width * channels;
  if (raw.length < height * (stride + 1)) throw new Error('PNG file cut short');
  const rows = Buffer.alloc(height * stride);
  for (let y = 0; y < height; ++y) {
    const filter = raw[y * (stride + 1)];
    const line = raw.subarray(y * (stride + 1) + 1, (y + 1) * (stride + 1));
    const at = y * stride;
    for (let i = 0; i < stride; ++i) {
      const a = i >= channels ? rows[at + i - channels] : 0;
      const b = y > 0 ? rows[at - stride + i] : 0;
      const c = i >= channels && y > 0 ? rows[at - stride + i - channels] : 0;
      const predicted = filter === 1 ? a : filter === 2 ? b : filter === 3 ? (a + b) >> 1
        : filter === 4 ? paeth(a, b, c) : 0;
      rows[at + i] = (line[i] + predicted) & 0xff;
    }
  }
  if (channels === 4) return { width, height, data: rows };
  const data = Buffer.alloc(width * height * 4);
  for (let p = 0; p < width * height; ++p) {
    rows.copy(data, p * 4, p * 3, p * 3 + 3);
    data[p * 4 + 3] = 255;
  }
  return { width, height, data };
}
