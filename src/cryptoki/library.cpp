// Finds libcryptoki.so, as the system's loader does for a library that this one is linked with: in the
// folders of LD_LIBRARY_PATH, beside this file, then where the loader looks for every library. Where there is
// none, it takes the embedded one, which lies in a folder of its own so that an HSM's library is found first.
//
// It is loaded here and not linked, because of its names. It may have functions of its own that are named
// like ours, and its calls of them must reach its own ones. A library that is linked finds ours first; one
// that is loaded here looks at itself before us.
#include "cryptoki/library.h"

#include <cstdio>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <locale.h>
#include <unistd.h>

#include "cryptoki/functions.h"
#include "util/fileVersion.h"
#include "zerlin/attrutil.h"

FILE_VERSION("1.1.1.1");

namespace zerlin {

std::atomic<const Functions*> foundFunctions;

namespace {

constexpr char LIBRARY[] = "libcryptoki.so";
constexpr char EMBEDDED[] = "zerlin/libcryptoki.so"; // from the folder of this file
constexpr char NOT_FOUND[] = "libcryptoki.so: cannot open shared object file";

struct Close {
    void operator()(void* handle) const { dlclose(handle); }
};
using Handle = std::unique_ptr<void, Close>;

constexpr Functions FAILING = failingFunctions();

std::mutex s_mutex;        // for what follows
void* s_library = nullptr; // not closed when the process ends: threads may still run its code
Functions s_functions;

// What a name is in the global scope: that of the program and of what it is linked with.
void* inProgram(const char* name)
{
    const Handle program(dlopen(nullptr, RTLD_LAZY));
    return dlsym(program.get(), name);
}

bool isReplaced(const char* name, const char* usualLibrary)
{
    void* const used = inProgram(name);
    const Handle usual(dlopen(usualLibrary, RTLD_LAZY | RTLD_NOLOAD));
    return used != nullptr && (usual == nullptr || used != dlsym(usual.get(), name));
}

// Whether the program is linked with this library, so that all libraries find our functions before their own.
bool isLinked()
{
    return inProgram("FindAttr") == reinterpret_cast<void*>(FindAttr);
}

// RTLD_DEEPBIND puts the library's own names before the program's. But the library would no longer use the
// program's allocator, if that has its own (as with AddressSanitizer), and freeing what another one has
// allocated ends the process.
int loadingFlags()
{
    constexpr const char* OPERATOR_NEW = sizeof(std::size_t) == 4 ? "_Znwj" : "_Znwm";
    const bool hasAllocator = isReplaced("malloc", "libc.so.6") || isReplaced(OPERATOR_NEW, "libstdc++.so.6");
    return RTLD_NOW | RTLD_LOCAL | (isLinked() && !hasAllocator ? RTLD_DEEPBIND : 0);
}

// Whether the loader would take the file: it passes over those of another width.
bool isOfOurWidth(const char* file)
{
    constexpr unsigned char CLASS = sizeof(void*) == 4 ? ELFCLASS32 : ELFCLASS64;
    unsigned char ident[EI_CLASS + 1] = {};
    const int opened = open(file, O_RDONLY | O_CLOEXEC);
    const bool isRead = opened >= 0 && read(opened, ident, sizeof ident) == sizeof ident;
    if (opened >= 0) close(opened);
    return isRead && ident[EI_CLASS] == CLASS;
}

std::string embeddedFile()
{
    const std::string own = ownFile();
    return own.substr(0, own.rfind('/') + 1) + EMBEDDED;
}

// The file that this library's search finds, in the loader's order; empty if only the loader's cache has it.
std::string findFile()
{
    const Handle self(dlopen(ownFile().c_str(), RTLD_LAZY | RTLD_NOLOAD));
    Dl_serinfo size;
    if (self == nullptr || dlinfo(self.get(), RTLD_DI_SERINFOSIZE, &size) != 0) return {};
    std::vector<Dl_serinfo> memory(size.dls_size / sizeof size + 1); // its end is an array without a bound
    Dl_serinfo* const folders = memory.data();
    if (dlinfo(self.get(), RTLD_DI_SERINFOSIZE, folders) != 0 ||
        dlinfo(self.get(), RTLD_DI_SERINFO, folders) != 0)
        return {};
    for (const Dl_serpath* folder = folders->dls_serpath; folder != folders->dls_serpath + folders->dls_cnt;
         ++folder) {
        std::string file = std::string(folder->dls_name) + "/" + LIBRARY;
        if (isOfOurWidth(file.c_str())) return file;
    }
    return {};
}

// The loader knows a library by its name: if one is loaded, it is used whatever lies where we look. That is
// right for the program's own, and wrong for one that another Java library, or another copy of this one, has
// loaded from elsewhere: calls and PINs would go to its HSM. A file that was chosen must be the one.
std::string refusal(const std::string& file)
{
    const Handle loaded(dlopen(LIBRARY, RTLD_LAZY | RTLD_NOLOAD));
    void* const used = s_library != nullptr ? s_library : loaded.get();
    if (used == nullptr) return {};
    void* const global = inProgram("C_Initialize");
    if (file.empty() && (used == s_library || (global != nullptr && global == dlsym(used, "C_Initialize"))))
        return {};
    const std::string own = file.empty() ? findFile() : file;
    if (own.empty() || Handle(dlopen(own.c_str(), RTLD_LAZY | RTLD_NOLOAD)).get() == used) return {};
    const link_map* map = nullptr;
    dlinfo(used, RTLD_DI_LINKMAP, &map);
    return std::string(LIBRARY) + " is already loaded in this process, from " + map->l_name +
           (file.empty() ? ", and would be used instead of " : ", and not from ") + own +
           ": use one JVM for each HSM library";
}

// The text of the system's loader in English, whatever the program's language: it is compared here and in
// NativeLibrary.java.
std::string loaderText()
{
    const locale_t english = newlocale(LC_ALL_MASK, "C", nullptr);
    const locale_t before = uselocale(english); // of null: changes nothing
    std::string text = dlerror();
    uselocale(before);
    if (english != nullptr) freelocale(english);
    return text;
}

std::string load(const std::string& file)
{
    Handle library(dlopen(file.empty() ? LIBRARY : file.c_str(), loadingFlags()));
    if (library == nullptr) {
        std::string problem = loaderText();
        if (!problem.starts_with(NOT_FOUND)) return problem;
        library.reset(dlopen(embeddedFile().c_str(), loadingFlags()));
        if (library == nullptr) return problem;
    }
    const char* missing = nullptr;
    const auto find = [&](const char* name, auto& function) {
        void* const symbol = dlsym(library.get(), name);
        if (symbol == nullptr && missing == nullptr) missing = name;
        setFunction(function, symbol);
    };
    s_functions = {};
    forEachStandardFunction([&](const char* name, auto member) { find(name, s_functions.standard.*member); });
    forEachVendorFunction([&](const char* name, auto member) { find(name, s_functions.*member); });
    if (missing != nullptr) return (file.empty() ? LIBRARY : file) + ": undefined symbol: " + missing;
    s_library = library.release();
    foundFunctions.store(&s_functions, std::memory_order_release);
    return {};
}

} // namespace

std::string ownFile()
{
    Dl_info info;
    return dladdr(reinterpret_cast<void*>(FindAttr), &info) != 0 ? info.dli_fname : "";
}

std::string loadLibrary(const std::string& chosen)
try {
    const std::lock_guard lock(s_mutex);
    const std::string file = chosen == "embedded" ? embeddedFile() : chosen;
    std::string problem = refusal(file);
    return problem.empty() && s_library == nullptr ? load(file) : problem;
} catch (const std::bad_alloc&) {
    return "out of memory"; // so short that the string allocates nothing
}

void unloadLibrary()
{
    const std::lock_guard lock(s_mutex);
    if (isLinked()) return; // the program may go on calling
    foundFunctions = nullptr;
    if (s_library != nullptr) dlclose(s_library);
    s_library = nullptr;
}

const Functions& findFunctions()
try {
    const std::lock_guard lock(s_mutex);
    const std::string problem = s_library == nullptr ? load({}) : std::string();
    if (problem.empty()) return s_functions;
    if (foundFunctions.exchange(&FAILING) == nullptr)
        std::fprintf(stderr, "zerlin: cannot use %s (%s)%s\n", LIBRARY, problem.c_str(),
            problem.starts_with(NOT_FOUND) ? "; put it beside libzerlin.so or in a folder of LD_LIBRARY_PATH"
                                           : "");
    return FAILING;
} catch (const std::bad_alloc&) {
    return FAILING;
}

} // namespace zerlin

// As in forward.cpp.
CK_RV CT_CopyObject(CK_SESSION_HANDLE hSession1, CK_SESSION_HANDLE hSession2, CK_OBJECT_HANDLE hObject,
    CK_ATTRIBUTE_PTR pTemplate, CK_ULONG ulCount, CK_OBJECT_HANDLE_PTR phNewObject)
{
    return zerlin::allFunctions().copyObject(hSession1, hSession2, hObject, pTemplate, ulCount, phNewObject);
}

CK_RV CT_InitToken(CK_SESSION_HANDLE hSession, CK_ULONG ulValue, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen,
    CK_UTF8CHAR_PTR pLabel)
{
    return zerlin::allFunctions().initToken(hSession, ulValue, pPin, ulPinLen, pLabel);
}

CK_RV CT_ResetToken(
    CK_SESSION_HANDLE hSession, CK_UTF8CHAR_PTR pPin, CK_ULONG ulPinLen, CK_UTF8CHAR_PTR pLabel)
{
    return zerlin::allFunctions().resetToken(hSession, pPin, ulPinLen, pLabel);
}
