# Runs PROGRAM on ARGUMENT, in ENVIRONMENT (NAME=value), and fails unless it ends with STATUS and says WORDS.
execute_process(COMMAND ${CMAKE_COMMAND} -E env ${ENVIRONMENT} ${PROGRAM} ${ARGUMENT}
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL STATUS)
  message(FATAL_ERROR "ended with ${status} instead of ${STATUS}:\n${output}")
endif()
if(NOT output MATCHES "${WORDS}")
  message(FATAL_ERROR "does not say \"${WORDS}\":\n${output}")
endif()
