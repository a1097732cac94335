// The ident string that every source file carries.
#pragma once

#include <cstddef>
#include <string_view>

namespace zerlin {

// "FileVersion: " and the two quoted keywords, with the file's place below the root of the sources.
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
        text[length] = '\0'; // does not compile where the text is too long
    }
};

} // namespace zerlin

// Stands once in every source file of the library, behind the includes: FILE_VERSION("1.1.1.3");
#define FILE_VERSION(revision)                                                                               \
    [[gnu::used]] static const char* const fileVersion = [] {                                                \
        static constexpr zerlin::FileVersionText ident(__FILE__, revision);                                  \
        return ident.text;                                                                                   \
    }()
