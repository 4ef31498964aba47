// Carries the precompiled header; has no code.
