// The version string that every source file of the library contains.
#pragma once

#include <cstddef>
#include <string_view>

namespace zerlin {

// The text "FileVersion: " with two quoted keywords: the path of the file from src/ on, and its revision.
struct FileVersionText {
    char text[128] = {};

    consteval FileVersionText(std::string_view file, std::string_view revision) noexcept
    {
        const std::size_t start = file.rfind("/src/") + 1;
        std::size_t length = 0;
        const std::string_view pieces[] = {"FileVersion: \"$RCSfile: prod/zerlin/",
            file.substr(start, file.rfind('.') - start), " $\" \"$Revision: ", revision, " $\""};
        for (const std::string_view piece : pieces) {
            for (const char character : piece) {
                text[length++] = character;
            }
        }
        text[length] = '\0'; // a text that is too long does not compile
    }
};

template <FileVersionText IDENT>
inline constexpr const char* IDENT_TEXT = IDENT.text;

} // namespace zerlin

// Stands once in every source file of the library, behind the includes: FILE_VERSION("1.1.1.3");
#define FILE_VERSION(revision)                                                                               \
    [[gnu::used]] static const char* const fileVersion =                                                     \
        zerlin::IDENT_TEXT<zerlin::FileVersionText(__FILE__, revision)>
