# Java programs and test classes, compiled against the jar:
#   add_classes(<target> [HEADER <file>] [OPTIONS <javac's>...] [CLASSPATH <more of it>...] [DEPENDS <targets>...]
#       SOURCES <files>...)
# They go to <binary folder>/classes. A HEADER, which javac derives from native methods, goes to
# <binary folder>/headers.
function(add_classes target)
    cmake_parse_arguments(java "" HEADER "OPTIONS;CLASSPATH;DEPENDS;SOURCES" ${ARGN})
    set(classes ${CMAKE_CURRENT_BINARY_DIR}/classes)
    set(headers ${CMAKE_CURRENT_BINARY_DIR}/headers)
    set(stamp ${CMAKE_CURRENT_BINARY_DIR}/classes.compiled)
    list(TRANSFORM java_HEADER PREPEND ${headers}/)
    list(PREPEND java_CLASSPATH ${zerlin_jar})
    list(JOIN java_CLASSPATH ":" classpath)
    add_custom_command(
        OUTPUT ${stamp} ${java_HEADER}
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${classes} ${headers}
        COMMAND ${javac} -Xlint:all -Werror ${java_OPTIONS}
            -cp "${classpath}" -d ${classes} -h ${headers} ${java_SOURCES}
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS ${zerlin_jar} ${java_DEPENDS} ${java_SOURCES}
        COMMENT "Compiling the Java classes of ${target}"
        VERBATIM)
    add_custom_target(${target} DEPENDS ${stamp})
    add_dependencies(${target} java ${java_DEPENDS})
endfunction()
