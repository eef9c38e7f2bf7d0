# Tests of the settings module.
