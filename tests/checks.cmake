# What else every change has to pass, as tests among the others.

add_test(NAME lint.format COMMAND ${PROJECT_SOURCE_DIR}/script/lint format)
# It begins first and takes what the others leave, which wait more than they work.
add_test(NAME lint.tidy COMMAND nice -n 19 ${PROJECT_SOURCE_DIR}/script/lint tidy)
set_tests_properties(lint.tidy PROPERTIES TIMEOUT 1800 COST 1000)
add_test(NAME docs.links COMMAND ${PROJECT_SOURCE_DIR}/script/check-docs)
if(VELMO_DESKTOP)
  add_test(NAME package.data COMMAND ${PROJECT_SOURCE_DIR}/script/linux/check-data $<TARGET_FILE:velmo>)
  add_test(NAME bench.runs COMMAND ${PROJECT_SOURCE_DIR}/script/linux/check-bench $<TARGET_FILE:desktop_benchmark>)
  add_test(NAME docs.lines COMMAND ${PROJECT_SOURCE_DIR}/script/linux/check-lines $<TARGET_FILE:velmo>)
  set_tests_properties(docs.lines PROPERTIES TIMEOUT 120 PROCESSORS 2)
endif()

# script/test builds these presets before it runs the tests of this one.
option(VELMO_SANITIZED_TESTS "Run the unit tests of the asan and tsan presets, too" OFF)
if(VELMO_SANITIZED_TESTS)
  # Older versions of the compiler that makes fuzzers run what an exception has left in a coroutine a second time.
  add_test(NAME asan.unit_tests COMMAND ${PROJECT_SOURCE_DIR}/build/asan/tests/unit_tests --gtest_brief=1
    --gtest_filter=-TaskTest.LetsAnExceptionOutLikeAnyCallback)
  add_test(NAME tsan.unit_tests COMMAND ${PROJECT_SOURCE_DIR}/build/tsan/tests/unit_tests --gtest_brief=1)
  set_tests_properties(asan.unit_tests tsan.unit_tests PROPERTIES TIMEOUT 600)
  # They wait more than they work. Two thousand months in eleven places are the same code each time, and
  # take minutes here.
  foreach(shard 0 1 2)
    add_test(NAME asan.linux_tests.${shard}
      COMMAND ${PROJECT_SOURCE_DIR}/build/asan/tests/platform/linux/linux_tests --gtest_brief=1
        --gtest_filter=-In/*Months.*)
    set_tests_properties(asan.linux_tests.${shard} PROPERTIES
      ENVIRONMENT "GTEST_TOTAL_SHARDS=3;GTEST_SHARD_INDEX=${shard}")
  endforeach()
  # What fuzzers have found, and a few seconds of what they think of next.
  file(GLOB fuzzers RELATIVE ${PROJECT_SOURCE_DIR}/tests/fuzz CONFIGURE_DEPENDS tests/fuzz/*_fuzzer.cpp)
  foreach(fuzzer ${fuzzers})
    string(REPLACE "_fuzzer.cpp" "" name ${fuzzer})
    add_test(NAME asan.fuzz.${name} COMMAND ${PROJECT_SOURCE_DIR}/script/fuzz --round ${name})
    set_tests_properties(asan.fuzz.${name} PROPERTIES TIMEOUT 120)
  endforeach()
  add_test(NAME asan.qt_tests
    COMMAND ${PROJECT_SOURCE_DIR}/build/asan/tests/platform/linux/qt/qt_tests --gtest_brief=1)
endif()
