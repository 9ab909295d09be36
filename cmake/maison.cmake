# The house: one library for each floor. What a floor may use are its link dependencies, and nothing
# else reaches its sources: tools/fleches.py looks at includes and symbols, and makes the table of
# docs/architecture.md from what is noted here.
set(ZUMA_MAISON ${PROJECT_BINARY_DIR}/maison.tsv)
file(WRITE ${ZUMA_MAISON} "")

# zuma_bibliotheque(name [INTERNE] DOSSIERS folder... [EN_TETES header...] [SAUF regex] DEPEND target...
#                   TIENT "what it holds")
# INTERNE is linked into the program and never installed. EN_TETES belong to this floor although they stand in a folder of another one.
function(zuma_bibliotheque nom)
  cmake_parse_arguments(A "INTERNE" "SAUF;TIENT" "DOSSIERS;EN_TETES;DEPEND" ${ARGN})
  set(sources)
  foreach(dossier ${A_DOSSIERS})
    file(GLOB trouve CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${dossier}/*.cpp
         ${PROJECT_SOURCE_DIR}/${dossier}/*.h)
    list(APPEND sources ${trouve})
  endforeach()
  if(A_SAUF)
    list(FILTER sources EXCLUDE REGEX ${A_SAUF})
  endif()
  set(genre)
  if(A_INTERNE)
    set(genre STATIC)
  endif()
  add_library(${nom} ${genre} ${sources} ${A_EN_TETES} ${PROJECT_SOURCE_DIR}/cmake/maison.cmake)
  string(REPLACE zuma_ "" court ${nom})
  add_library(zuma::${court} ALIAS ${nom})
  set_target_properties(${nom} PROPERTIES LINKER_LANGUAGE CXX EXPORT_NAME ${court}
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  target_compile_features(${nom} PUBLIC cxx_std_20)
  target_include_directories(${nom} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
    $<INSTALL_INTERFACE:include> $<INSTALL_INTERFACE:include/zuma>)
  target_link_libraries(${nom} PRIVATE $<BUILD_INTERFACE:zuma_flags> PUBLIC ${A_DEPEND})
  list(TRANSFORM sources REPLACE "^${PROJECT_SOURCE_DIR}/" "")
  file(APPEND ${ZUMA_MAISON}
    "${nom}\t${A_DOSSIERS}\t${A_EN_TETES}\t${A_DEPEND}\t${A_TIENT}\t${sources}\n")
endfunction()
