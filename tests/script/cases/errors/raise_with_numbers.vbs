' Numbers of errors are 1 to 65535, and result codes.
Fails 5, "Err.Raise 0"
Fails 5, "Err.Raise 65536"
Fails 5, "Err.Raise 2147483647"
Fails 65535, "Err.Raise 65535"
Fails 1, "Err.Raise 1"
Fails 450, "Err.Raise"
