#pragma once

#include <string>

namespace zan::test {

/// Where an address of the code lies.
struct FunctionName
{
    std::string library;  ///< file name without its folder
    std::string function; ///< readable; empty when the library tells nothing about it

    /// Reads the symbols of the library's file: also those of functions that it does not export.
    static FunctionName of(const void* address);
    /// Code of the toolkit: its libraries, and its templates in ours.
    bool isToolkit() const;
    /// Code of the language's own libraries, which is nobody's.
    bool isRuntime() const;
};

} // namespace zan::test
