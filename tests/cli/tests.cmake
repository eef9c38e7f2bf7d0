list(APPEND TAVIK_CORE_TESTS
    cli/tool_test.cpp
)
