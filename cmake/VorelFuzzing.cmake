# vorel_add_fuzz_target(NAME name SOURCES ...)
# The fuzz target fuzz-NAME feeds the entry function LLVMFuzzerTestOneInput in SOURCES (and
# calls LLVMFuzzerInitialize when they define it). Its kept corpus is fuzz/corpus/NAME and the
# inputs that once made it fail are fuzz/crashes/NAME.
#
# In a fuzz build (VOREL_FUZZ, clang) it is a libFuzzer program. In every other build the same
# sources are linked with a replay driver into the test test-fuzz-NAME, which runs every kept
# input once, so that the ordinary suite catches what the fuzzer once found. Its tests are named
# after the target: command-language gives CommandLanguageReplay.KeptInputsRunCleanly.
set(VOREL_FUZZ_INPUTS ${PROJECT_SOURCE_DIR}/fuzz)

function(vorel_add_fuzz_target)
  cmake_parse_arguments(F "" "NAME" "SOURCES" ${ARGN})
  if(VOREL_FUZZ)
    # The leak checker's suppressions of the sanitized builds; in the program itself, where the
    # sanitizer runtime looks for them.
    add_executable(fuzz-${F_NAME} ${F_SOURCES}
                   ${PROJECT_SOURCE_DIR}/runtime/core/sanitizerDefaults.cpp)
    target_link_libraries(fuzz-${F_NAME} PRIVATE fuzz_host)
    target_link_options(fuzz-${F_NAME} PRIVATE -fsanitize=fuzzer)
    set_property(GLOBAL APPEND PROPERTY VOREL_FUZZ_TARGETS fuzz-${F_NAME})
  else()
    string(REPLACE "-" ";" words ${F_NAME})
    set(suite "")
    foreach(word ${words})
      string(SUBSTRING ${word} 0 1 first)
      string(SUBSTRING ${word} 1 -1 rest)
      string(TOUPPER ${first} first)
      string(APPEND suite ${first}${rest})
    endforeach()
    vorel_add_test(NAME test-fuzz-${F_NAME}
      SOURCES ${PROJECT_SOURCE_DIR}/tests/fuzz/corpusReplay.cpp ${F_SOURCES}
      LIBS fuzz_host)
    target_compile_definitions(test-fuzz-${F_NAME} PRIVATE
      VOREL_FUZZ_CORPUS="${VOREL_FUZZ_INPUTS}/corpus/${F_NAME}"
      VOREL_FUZZ_CRASHES="${VOREL_FUZZ_INPUTS}/crashes/${F_NAME}"
      VOREL_FUZZ_REPLAY=${suite}Replay)
  endif()
endfunction()
