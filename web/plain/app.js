// The plain page needs no script.
