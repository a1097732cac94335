# The jar, and the C headers that javac derives from its native methods: with them the compiler holds every
# native against its Java declaration.
file(GLOB_RECURSE java_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/java/*.java)
set(zerlin_classes ${PROJECT_BINARY_DIR}/java/classes)
set(zerlin_jni_headers ${PROJECT_BINARY_DIR}/java/headers)
set(zerlin_jar ${PROJECT_BINARY_DIR}/zerlin.jar)
set(zerlin_module_info ${PROJECT_SOURCE_DIR}/java9/module-info.java)
set(zerlin_manifest ${PROJECT_BINARY_DIR}/java/MANIFEST.MF)

# A program that loads another library than its jar's gets an error that says so.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS java/halvorn/zerlin/NativeLibrary.java)
file(STRINGS java/halvorn/zerlin/NativeLibrary.java version REGEX "VERSION = \"${PROJECT_VERSION}\"")
if(NOT version)
    message(FATAL_ERROR "NativeLibrary.VERSION is not ${PROJECT_VERSION}, the version in CMakeLists.txt.")
endif()

# Rewritten only when it changes, so that a new version makes a new jar and nothing else does.
file(CONFIGURE OUTPUT ${zerlin_manifest} @ONLY
    CONTENT "Implementation-Title: @PROJECT_NAME@\nImplementation-Version: @PROJECT_VERSION@\n")

add_custom_command(
    OUTPUT ${zerlin_jar} ${zerlin_jni_headers}/halvorn_zerlin_Cryptoki.h
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${zerlin_classes} ${zerlin_classes}-9 ${zerlin_jni_headers}
    COMMAND ${javac} --release 8 -Xlint:all,-options -Xdoclint:all/protected -Werror
        -d ${zerlin_classes} -h ${zerlin_jni_headers} ${java_sources}
    # Java 8 does not see the module descriptor, which the jar tool checks against the classes.
    COMMAND ${javac} --release 9 -Xlint:all,-options -Werror
        --patch-module halvorn.zerlin=${zerlin_classes} -d ${zerlin_classes}-9 ${zerlin_module_info}
    COMMAND ${jar} --create --file ${zerlin_jar} --manifest ${zerlin_manifest}
        --module-version ${PROJECT_VERSION} -C ${zerlin_classes} . --release 9 -C ${zerlin_classes}-9 .
    DEPENDS ${java_sources} ${zerlin_module_info} ${zerlin_manifest}
    COMMENT "Compiling the Java classes"
    VERBATIM)
add_custom_target(java ALL DEPENDS ${zerlin_jar})
