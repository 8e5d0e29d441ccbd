# What tools/windows/pack puts into the archive and the installer, beside the licences of others.
get_property(programs GLOBAL PROPERTY PACKWISE_PROGRAMS)
install(TARGETS ${programs} RUNTIME DESTINATION . COMPONENT windows)
install(FILES ${PROJECT_SOURCE_DIR}/tools/windows/README.txt DESTINATION . COMPONENT windows)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION . RENAME LICENSE.txt COMPONENT windows)
file(GLOB sets ${PROJECT_SOURCE_DIR}/data/*.set)
install(FILES ${sets} DESTINATION sets COMPONENT windows)
install(FILES ${PROJECT_SOURCE_DIR}/data/README.md DESTINATION sets RENAME README.txt COMPONENT windows)
