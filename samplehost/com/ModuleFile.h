#pragma once

#include <windows.h>

#include <unknwn.h>

#include <string>

namespace kavrelon {

/// A program's or a library's file: full path, and the version in its resources as "1.2.3". Text that is not
/// known is empty.
struct ModuleFile {
    std::string path;
    std::string version;

    /// The file of this program.
    static ModuleFile ofProgram();
    /// The file that an object's code is in.
    static ModuleFile ofObject(const IUnknown& object);
};

}  // namespace kavrelon
