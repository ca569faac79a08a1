#include "web/dom/HTMLVideoElement.h"

HTMLVideoElement::HTMLVideoElement()
    : Element("video")
{
}
