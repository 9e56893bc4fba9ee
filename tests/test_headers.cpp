// The source that a target has to have; what counts are its precompiled headers.
