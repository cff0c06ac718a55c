# Installs the build tree into a fresh prefix, builds the host of this folder against it and
# runs that host. Arguments: -DBUILD_DIR= -DSOURCE_DIR= -DWORK_DIR= -DGENERATOR= -DCXX=
# -DSANITIZE= (a sanitizer build's libraries need the host built and run the same way)
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
set(flags)
set(env QT_QPA_PLATFORM=offscreen)
if(SANITIZE)
  set(flags -DCMAKE_CXX_FLAGS=-fsanitize=address,undefined)
  # The sanitizer tests of the library watch for leaks; this host only proves the package.
  list(APPEND env ASAN_OPTIONS=detect_leaks=0)
endif()
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G ${GENERATOR} ${flags}
  -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
# The host finds the installed libraries through the run path the package gave it.
run(${CMAKE_COMMAND} -E env ${env} ${WORK_DIR}/build/kw_installed_host)
message(STATUS "${last_output}")
