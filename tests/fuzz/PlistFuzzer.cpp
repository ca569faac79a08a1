// libFuzzer target: whatever bytes a preferences or profile file holds, reading them must
// neither crash nor hang, and what was read must survive being written and read again.

#include "platform/core/PropertyListFile.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    PlistValue value = parsePropertyList(data, size);
    if (value.isNil())
        return 0;
    std::optional<std::string> xml = propertyListXML(value);
    if (!xml)
        std::abort(); // anything read must be writable
    PlistValue again = parsePropertyList(reinterpret_cast<const std::uint8_t*>(xml->data()), xml->size());
    if (again.isNil())
        std::abort();
    return 0;
}
