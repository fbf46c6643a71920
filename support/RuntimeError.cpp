#include "support/RuntimeError.h"

namespace kavrelon {

const char* runtimeErrorText(RuntimeErrorNumber number) noexcept {
    switch (number) {
        case RuntimeErrorNumber::InvalidProcedureCall:
            return "Invalid procedure call or argument";
        case RuntimeErrorNumber::Overflow:
            return "Overflow";
        case RuntimeErrorNumber::SubscriptOutOfRange:
            return "Subscript out of range";
        case RuntimeErrorNumber::TypeMismatch:
            return "Type mismatch";
        case RuntimeErrorNumber::FileNotFound:
            return "File not found";
        case RuntimeErrorNumber::PathFileAccess:
            return "Path/File access error";
        case RuntimeErrorNumber::ObjectNotSet:
            return "Object variable or With block variable not set";
        case RuntimeErrorNumber::InvalidPropertyValue:
            return "Invalid property value";
        case RuntimeErrorNumber::SetNotPermitted:
            return "Set not permitted";
        case RuntimeErrorNumber::NoSuchMember:
            return "Object doesn't support this property or method";
    }
    return "Unknown error";
}

void raise(RuntimeErrorNumber number, std::string_view source) {
    throw RuntimeError(number, std::string(source));
}

}  // namespace kavrelon
