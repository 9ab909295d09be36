# What is installed: libraries and headers (component dev), the program and what goes with it.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(dossier_cmake ${CMAKE_INSTALL_LIBDIR}/cmake/zuma)

# zuma_en_tete(file folder): a header, with component dev and, for tools/documentation.sh, with
# component headers, which can be installed before any library is built.
function(zuma_en_tete fichier dossier)
  foreach(choix "dev" "headers;EXCLUDE_FROM_ALL")
    install(FILES ${fichier} COMPONENT ${choix}
      DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zuma/${dossier})
  endforeach()
endfunction()

# zuma_installe(export-set target...): the libraries and their headers, each in its folder.
function(zuma_installe jeu)
  install(TARGETS ${ARGN} EXPORT ${jeu}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT lib NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
  install(EXPORT ${jeu} NAMESPACE zuma:: DESTINATION ${dossier_cmake} COMPONENT dev)
  foreach(bibliotheque ${ARGN})
    get_target_property(en_tetes ${bibliotheque} SOURCES)
    list(FILTER en_tetes INCLUDE REGEX "\\.h$")
    list(TRANSFORM en_tetes REPLACE "^${PROJECT_SOURCE_DIR}/" "")
    foreach(en_tete ${en_tetes})
      cmake_path(GET en_tete PARENT_PATH dossier)
      zuma_en_tete(${PROJECT_SOURCE_DIR}/${en_tete} ${dossier})
    endforeach()
  endforeach()
endfunction()

zuma_installe(zuma-library zuma_base zuma_tree zuma_model zuma_forms zuma_drivers zuma_sim zuma_reader)
install(TARGETS zuma_driver_module EXPORT zuma-library)
zuma_installe(zuma-host zuma_platform zuma_publication zuma_host)
if(ZUMA_QT)
  zuma_installe(zuma-qt zuma_qt)
endif()

zuma_en_tete(${PROJECT_BINARY_DIR}/include/zuma/version.h .)
configure_package_config_file(cmake/zuma-config.cmake.in zuma-config.cmake
  INSTALL_DESTINATION ${dossier_cmake} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(zuma-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zuma-config.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/zuma-config-version.cmake DESTINATION ${dossier_cmake} COMPONENT dev)
# Relative, so that a prefix chosen at the installation holds.
cmake_path(SET remonte "/${CMAKE_INSTALL_LIBDIR}/pkgconfig")
cmake_path(RELATIVE_PATH remonte BASE_DIRECTORY / OUTPUT_VARIABLE descend)
string(REGEX REPLACE "[^/]+" ".." remonte ${descend})
# Static libraries leave what they need to who links them.
set(exige Requires)
if(BUILD_SHARED_LIBS)
  set(exige Requires.private)
endif()
configure_file(cmake/zuma.pc.in zuma.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zuma.pc COMPONENT dev
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(ZUMA_PROGRAM)
  install(TARGETS zuma_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
  install(FILES docs/man/zuma.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
  install(FILES tools/completion/zuma.bash RENAME zuma COMPONENT program
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  if(ZUMA_QT)
    install(TARGETS zuma_desktop_program
      RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT desktop)
    install(FILES docs/man/zuma-desktop.1
      DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT desktop)
    install(FILES data/zuma-desktop.desktop
      DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT desktop)
    install(FILES data/zuma.svg COMPONENT desktop
      DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  endif()
endif()

if(ZUMA_PYTHON)
  # Where Debian's Python looks, whatever the architecture: the module's own name tells that.
  set(dossier_python lib/python3/dist-packages/zuma)
  install(TARGETS zuma_python LIBRARY DESTINATION ${dossier_python} COMPONENT python)
  install(DIRECTORY python/zuma/ DESTINATION ${dossier_python} COMPONENT python
    FILES_MATCHING PATTERN "*.py" PATTERN "*.pyi" PATTERN "py.typed"
    PATTERN "__pycache__" EXCLUDE)
endif()
