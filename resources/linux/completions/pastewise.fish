complete --command pastewise --no-files
complete --command pastewise --long-option help --description 'Show how to use it'
complete --command pastewise --long-option version --description 'Show the version'
