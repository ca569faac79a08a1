#include "tests/web/script/ScriptTestSupport.h"

namespace {

using ImageDataScript = ScriptTest;

TEST_F(ImageDataScript, PixelFormatsAndTheirArrays)
{
    EXPECT_EQ(run("var d = new ImageData(2, 1); [d.pixelFormat, d.data.constructor.name, d.colorSpace].join()"),
              "rgba-unorm8,Uint8ClampedArray,srgb");
    EXPECT_EQ(run("var d = new ImageData(2, 1, {pixelFormat: 'rgba-float16'});"
                  "d.data[0] = -1.5; d.data[1] = 1024;"
                  "[d.pixelFormat, d.data.constructor.name, d.data.length, d.data === d.data, d.data[0], d.data[1]].join()"),
              "rgba-float16,Float16Array,8,true,-1.5,1024");
    // Wrapping a script's array: the same array back; the format must match its type.
    EXPECT_EQ(run("var a = new Float16Array(8); var d = new ImageData(a, 2, 1, {pixelFormat: 'rgba-float16'});"
                  "[d.data === a, d.height].join()"),
              "true,1");
    EXPECT_EQ(run("var r = [];"
                  "for (const make of [() => new ImageData(new Float16Array(8), 2),"
                  "                    () => new ImageData(new Uint8ClampedArray(8), 2, 1, {pixelFormat: 'rgba-float16'}),"
                  "                    () => new ImageData(2, 1, {pixelFormat: 'float16'}),"
                  "                    () => new ImageData(new Float32Array(8), 2)])"
                  "  try { make(); r.push('ok'); } catch (e) { r.push(e.name); }"
                  "r.join()"),
              "InvalidStateError,InvalidStateError,TypeError,InvalidStateError");
    // Something that only claims to be a Float16Array is not one.
    EXPECT_EQ(run("var fake = Object.create(Float16Array.prototype);"
                  "try { new ImageData(fake, 1); 'made' } catch (e) { e.name }"),
              "TypeError");
}

TEST_F(ImageDataScript, ContextReadsAndWritesHalfFloats)
{
    EXPECT_EQ(run("var x = document.createElement('canvas').getContext('2d');"
                  "x.fillStyle = '#ff8000'; x.fillRect(0, 0, 4, 4);"
                  "var d = x.getImageData(0, 0, 1, 1, {pixelFormat: 'rgba-float16'});"
                  "var back = x.getImageData(0, 0, 1, 1);"
                  "x.clearRect(0, 0, 4, 4); x.putImageData(d, 1, 1);"
                  "[d.pixelFormat, Array.from(d.data).map(v => v.toFixed(2)), Array.from(x.getImageData(1, 1, 1, 1).data)].join(';')"),
              "rgba-float16;1.00,0.50,0.00,1.00;255,128,0,255");
}

TEST_F(ImageDataScript, ContextsReportTheirColorType)
{
    EXPECT_EQ(run("var make = (o) => document.createElement('canvas').getContext('2d', o).getContextAttributes().colorType;"
                  "[make(), make({colorType: 'unorm8'}), make({colorType: 'float16', colorSpace: 'display-p3'})].join()"),
              "unorm8,unorm8,float16");
    EXPECT_EQ(run("try { document.createElement('canvas').getContext('2d', {colorType: 'float32'}); 'made' }"
                  "catch (e) { e.name }"),
              "TypeError");
}

TEST_F(ImageDataScript, CreateImageDataCopiesTypedArraysOfChannels)
{
    // Four arguments: the channels of a typed array, converted to a format of ours.
    EXPECT_EQ(run("var x = document.createElement('canvas').getContext('2d');"
                  "var r = [];"
                  "for (const a of [new Uint8ClampedArray([255, 128, 0, 255]), new Uint16Array([65535, 32896, 0, 65535]),"
                  "                 new Float32Array([1, 0.5, 0, 1])]) {"
                  "  var d = x.createImageData(a, 1, 1, {});"
                  "  x.putImageData(d, 5, 5);"
                  "  r.push(d.pixelFormat + ':' + Array.from(x.getImageData(5, 5, 1, 1).data));"
                  "}"
                  "r.join(' ')"),
              "rgba-unorm8:255,128,0,255 rgba-unorm8:255,128,0,255 rgba-float16:255,128,0,255");
    EXPECT_EQ(run("var x = document.createElement('canvas').getContext('2d');"
                  "var r = [];"
                  "for (const make of [() => x.createImageData(new Float32Array(4), 2, 1, {}),"
                  "                    () => x.createImageData(new Int8Array(4), 1, 1, {}),"
                  "                    () => x.createImageData(4, 1, 1, {})])"
                  "  try { make(); r.push('ok'); } catch (e) { r.push(e.name); }"
                  "r.join()"),
              "IndexSizeError,TypeError,TypeError");
}

} // namespace
