if exists('b:did_ftplugin')
    finish
endif
let b:did_ftplugin = 1

setlocal expandtab shiftwidth=4 softtabstop=4 textwidth=110
setlocal comments=:///,://!,:// commentstring=//\ %s
setlocal formatoptions-=t formatoptions+=croql
let b:undo_ftplugin = 'setlocal expandtab< shiftwidth< softtabstop< textwidth< comments< commentstring< formatoptions<'
