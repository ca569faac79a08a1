#include "platform/web/canvas/ImageData.h"

ImageData::ImageData(std::shared_ptr<std::uint8_t> data, unsigned width, unsigned height, PredefinedColorSpace colorSpace)
    : data_(std::move(data)), width_(width), height_(height), colorSpace_(colorSpace) {}
ExceptionOr<std::shared_ptr<ImageData>> ImageData::create(unsigned, unsigned, const ImageDataSettings&)
{
    return DOMException{"IndexSizeError", "not implemented"};
}
ExceptionOr<std::shared_ptr<ImageData>> ImageData::create(std::uint8_t*, std::size_t, unsigned, std::optional<unsigned>,
                                                          std::shared_ptr<void>, const ImageDataSettings&)
{
    return DOMException{"IndexSizeError", "not implemented"};
}
