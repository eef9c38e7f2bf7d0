# Tests of the event log and the debug viewer.
