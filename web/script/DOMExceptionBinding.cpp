#include "web/script/Bindings.h"
#include "web/script/Realm.h"

#include <string_view>

namespace script {

namespace {

struct LegacyCode {
    std::string_view name;
    int code;
};

constexpr LegacyCode kLegacyCodes[] = {
    {"IndexSizeError", 1}, {"HierarchyRequestError", 3}, {"WrongDocumentError", 4},
    {"InvalidCharacterError", 5}, {"NoModificationAllowedError", 7}, {"NotFoundError", 8},
    {"NotSupportedError", 9}, {"InUseAttributeError", 10}, {"InvalidStateError", 11},
    {"SyntaxError", 12}, {"InvalidModificationError", 13}, {"NamespaceError", 14},
    {"InvalidAccessError", 15}, {"TypeMismatchError", 17}, {"SecurityError", 18},
    {"NetworkError", 19}, {"AbortError", 20}, {"URLMismatchError", 21},
    {"QuotaExceededError", 22}, {"TimeoutError", 23}, {"InvalidNodeTypeError", 24},
    {"DataCloneError", 25},
};

int legacyCode(std::string_view name)
{
    for (const LegacyCode& entry : kLegacyCodes)
        if (entry.name == name)
            return entry.code;
    return 0;
}

JSObjectRef constructDOMException(Call& call)
{
    DOMException exception;
    exception.message = call.has(0) ? call.string(0) : std::string();
    exception.name = call.has(1) ? call.string(1) : std::string("Error");
    return call.realm().wrap(domExceptionInterface, std::make_shared<DOMException>(std::move(exception)));
}

} // namespace

InterfaceDefinition domExceptionInterface = {
    .name = "DOMException",
    .constructor = &constructDOMException,
    .members = {
        readonlyAttribute<domExceptionInterface, "name">([](Call&, DOMException& e) { return e.name; }),
        readonlyAttribute<domExceptionInterface, "message">([](Call&, DOMException& e) { return e.message; }),
        readonlyAttribute<domExceptionInterface, "code">([](Call&, DOMException& e) { return legacyCode(e.name); }),
        constant("INDEX_SIZE_ERR", 1), constant("DOMSTRING_SIZE_ERR", 2), constant("HIERARCHY_REQUEST_ERR", 3),
        constant("WRONG_DOCUMENT_ERR", 4), constant("INVALID_CHARACTER_ERR", 5), constant("NO_DATA_ALLOWED_ERR", 6),
        constant("NO_MODIFICATION_ALLOWED_ERR", 7), constant("NOT_FOUND_ERR", 8), constant("NOT_SUPPORTED_ERR", 9),
        constant("INUSE_ATTRIBUTE_ERR", 10), constant("INVALID_STATE_ERR", 11), constant("SYNTAX_ERR", 12),
        constant("INVALID_MODIFICATION_ERR", 13), constant("NAMESPACE_ERR", 14), constant("INVALID_ACCESS_ERR", 15),
        constant("VALIDATION_ERR", 16), constant("TYPE_MISMATCH_ERR", 17), constant("SECURITY_ERR", 18),
        constant("NETWORK_ERR", 19), constant("ABORT_ERR", 20), constant("URL_MISMATCH_ERR", 21),
        constant("QUOTA_EXCEEDED_ERR", 22), constant("TIMEOUT_ERR", 23), constant("INVALID_NODE_TYPE_ERR", 24),
        constant("DATA_CLONE_ERR", 25),
    },
    .errorPrototype = true,
};

} // namespace script
