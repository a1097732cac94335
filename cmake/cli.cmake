# The command zerlin: its jar, and the script build/<abi>/bin/zerlin with an archive of classes, which makes it start
# faster. Another JVM does not use the archive.
set(picocli /usr/share/java/picocli.jar)
set(jackson /usr/share/java/jackson-core.jar)
set(zerlin_cli_jar ${PROJECT_BINARY_DIR}/zerlin-cli.jar)
set(zerlin_cli_classes ${PROJECT_BINARY_DIR}/cli/classes)
set(cli_manifest ${PROJECT_BINARY_DIR}/cli/MANIFEST.MF)
set(cli_script ${PROJECT_BINARY_DIR}/bin/zerlin)
set(cli_archive ${PROJECT_BINARY_DIR}/bin/zerlin.jsa)
file(GLOB_RECURSE cli_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/cli/*.java)

# For "java -jar zerlin-cli.jar". The script names the jars itself: an archive has no classes of a jar that a manifest
# names by a URL.
file(CONFIGURE OUTPUT ${cli_manifest} @ONLY CONTENT
"Main-Class: halvorn.zerlin.cli.Main
Class-Path: zerlin.jar file://${picocli} file://${jackson}
Enable-Native-Access: ALL-UNNAMED
")
add_custom_command(
    OUTPUT ${zerlin_cli_jar}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${zerlin_cli_classes}
    COMMAND ${javac} --release 8 -Xlint:all,-options,-path -Werror -proc:none
        -cp ${zerlin_jar}:${picocli}:${jackson} -d ${zerlin_cli_classes} ${cli_sources}
    COMMAND ${jar} --create --file ${zerlin_cli_jar} --manifest ${cli_manifest} -C ${zerlin_cli_classes} .
    DEPENDS ${cli_sources} ${zerlin_jar} ${cli_manifest}
    COMMENT "Compiling the command zerlin"
    VERBATIM)

# The script of the build, and the installed one. Both find the jars from their own place. The JVM finds an installed
# library where the system keeps it, and the Debian package makes the archive.
function(write_script file cli_jars cli_archive cli_java cli_options)
    configure_file(${PROJECT_SOURCE_DIR}/cli/zerlin.in ${file} @ONLY
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endfunction()
set(cli_installed_script ${PROJECT_BINARY_DIR}/cli/zerlin)
write_script(${cli_script} .. "$here/zerlin.jsa" "${ZERLIN_JDK}/bin/java"
    "\"-Djava.library.path=${PROJECT_BINARY_DIR}/lib\"")
write_script(${cli_installed_script} ../share/java /var/cache/zerlin/zerlin.jsa java "")
set(cli_training ${PROJECT_SOURCE_DIR}/tools/with-token --module ${ZERLIN_SOFTHSM} ${cli_script} slots >/dev/null)
list(JOIN cli_training " " cli_training)
add_custom_command(
    OUTPUT ${cli_archive}
    COMMAND ${CMAKE_COMMAND} -E rm -f ${cli_archive}
    COMMAND env ZERLIN_ARCHIVE=make sh -c ${cli_training}
    DEPENDS ${zerlin_cli_jar} ${cli_script} zerlin softtoken ${PROJECT_SOURCE_DIR}/tools/with-token
    COMMENT "Making the class archive of the command zerlin"
    VERBATIM)

# The manual page and the bash completion, from the commands themselves.
set(cli_manual ${PROJECT_BINARY_DIR}/cli/zerlin.1)
set(cli_completion ${PROJECT_BINARY_DIR}/cli/zerlin.bash)
set(cli_page ${PROJECT_SOURCE_DIR}/packaging/ManPage.java)
set(cli_path ${zerlin_cli_jar}:${zerlin_jar}:${picocli}:${jackson})
add_custom_command(
    OUTPUT ${cli_manual} ${cli_completion}
    COMMAND ${java} -cp ${cli_path} ${cli_page} ${PROJECT_VERSION} ${cli_manual} ${cli_completion}
    DEPENDS ${zerlin_cli_jar} ${cli_page}
    COMMENT "Writing the manual page and the completion of the command zerlin"
    VERBATIM)
add_custom_target(cli ALL DEPENDS ${cli_archive} ${cli_manual} ${cli_completion})

install(FILES ${zerlin_cli_jar} DESTINATION ${CMAKE_INSTALL_DATADIR}/java)
install(PROGRAMS ${cli_installed_script} DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${cli_manual} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${cli_completion} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME zerlin)
add_dependencies(cli java)
