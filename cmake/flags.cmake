# How every native target is compiled.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(ZERLIN_ABI STREQUAL i386)
    set(width -m32)
else()
    set(width -m64)
endif()
add_compile_options(${width} -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
add_link_options(${width})

if(ZERLIN_SANITIZE)
    add_compile_options(-O1 -g -fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
else()
    add_compile_options(-fstack-protector-strong -D_FORTIFY_SOURCE=2)
    add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack,-z,text)
endif()

include_directories(${PROJECT_SOURCE_DIR}/include)
include_directories(SYSTEM ${ZERLIN_JDK}/include ${ZERLIN_JDK}/include/linux)
