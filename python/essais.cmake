# zuma_essai_python(name argument...): a test that the system's Python runs with the package as it was
# built. Under the sanitizers their library comes first, and what the interpreter itself leaves at its
# end is no leak of ours.
enable_testing()
set(publications_python ${CMAKE_CURRENT_BINARY_DIR}/publications)
file(MAKE_DIRECTORY ${publications_python})
set(entourage_python
  "PYTHONPATH=${PROJECT_BINARY_DIR}/python"
  "PYTHONDONTWRITEBYTECODE=1"
  "MPLBACKEND=Agg"
  "ZUMA_PUBLICATIONS=${publications_python}"
  "ZUMA_EXAMPLES=${PROJECT_SOURCE_DIR}/examples/python")
if(ZUMA_SANITIZE)
  set(avant)
  foreach(bibliotheque libasan.so libstdc++.so)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${bibliotheque}
      OUTPUT_VARIABLE chemin OUTPUT_STRIP_TRAILING_WHITESPACE)
    list(APPEND avant ${chemin})
  endforeach()
  list(JOIN avant ":" avant)
  list(APPEND entourage_python "LD_PRELOAD=${avant}" "ASAN_OPTIONS=detect_leaks=0")
endif()

function(zuma_essai_python nom)
  add_test(NAME python_${nom} COMMAND ${Python_EXECUTABLE} ${ARGN})
  set_tests_properties(python_${nom} PROPERTIES ENVIRONMENT "${entourage_python}" TIMEOUT 900)
endfunction()
