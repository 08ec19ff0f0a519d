"""The steps that build the package."""
