// The target that the precompiled header belongs to needs a source.
