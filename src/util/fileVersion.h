// The version string that every source file of the library contains.
#pragma once

#include <cstddef>
#include <string_view>

namespace zerlin {

// The text "FileVersion: " with two quoted keywords: the path of the file from src/ on, and its revision.
struct FileVersionText {
    char text[128] = {};

    consteval FileVersionText(std::string_view file, std::string_view revision)
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

} // namespace zerlin

// Use it once in every source file of the library, after the includes: FILE_VERSION("1.1.1.3");
#define FILE_VERSION(revision)                                                                               \
    [[gnu::used]] static const char* const fileVersion = [] {                                                \
        static constexpr zerlin::FileVersionText ident(__FILE__, revision);                                  \
        return ident.text;                                                                                   \
    }()
