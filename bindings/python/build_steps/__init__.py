"""What is run when the package is built."""
