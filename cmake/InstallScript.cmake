# Run by "cmake --install" with the folders data, made, manFolder, bin and sysconf: what depends on
# the prefix, and what is packed on the way.
set(prefix "${CMAKE_INSTALL_PREFIX}")
set(BINDIR "${prefix}/${bin}")
set(SYSCONFDIR "${prefix}/${sysconf}")
if(prefix STREQUAL "/usr" OR IS_ABSOLUTE "${sysconf}")
  set(SYSCONFDIR "/etc")
endif()

configure_file(${data}/packwise-host.service.in ${made}/packwise-host.service @ONLY)
file(INSTALL ${made}/packwise-host.service DESTINATION "${prefix}/lib/systemd/system")
file(INSTALL ${data}/host.ini DESTINATION "${SYSCONFDIR}/packwise")

# install_packed(file folder name): packed as Debian wants it, without a time of its own.
function(install_packed file folder name)
  execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${made}/${name}.gz COMMAND_ERROR_IS_FATAL ANY)
  file(INSTALL ${made}/${name}.gz DESTINATION "${prefix}/${folder}")
endfunction()
file(GLOB pages ${data}/man/*.[16])
foreach(page ${pages})
  get_filename_component(name ${page} NAME)
  string(REGEX REPLACE ".*\\." "" section ${name})
  install_packed(${page} ${manFolder}/man${section} ${name})
endforeach()

# A Debian package says what is new in a form of its own.
if(prefix STREQUAL "/usr")
  file(STRINGS ${data}/../CHANGELOG.md versions REGEX "^## \\[[0-9.]+\\] - ")
  set(text "")
  foreach(line ${versions})
    string(REGEX REPLACE "^## \\[(.*)\\] - (.*)$" "\\1;\\2" parts ${line})
    list(GET parts 0 version)
    list(GET parts 1 day)
    execute_process(COMMAND date --utc --rfc-email --date=${day} OUTPUT_VARIABLE day
      OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    string(APPEND text "packwise (${version}) bookworm; urgency=medium\n\n"
      "  * See CHANGELOG.md beside this file.\n\n -- ${contact}  ${day}\n\n")
  endforeach()
  file(WRITE ${made}/changelog "${text}")
  install_packed(${made}/changelog share/doc/packwise changelog)
endif()
