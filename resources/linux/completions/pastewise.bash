complete -W '--help --version' pastewise
