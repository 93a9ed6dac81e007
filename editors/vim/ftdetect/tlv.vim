autocmd BufRead,BufNewFile *.tlv set filetype=tlv
