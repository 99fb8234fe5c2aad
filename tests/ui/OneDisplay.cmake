set_tests_properties(${kestrel_ui_test_TESTS} ${kestrel_app_test_TESTS} PROPERTIES RESOURCE_LOCK display)
