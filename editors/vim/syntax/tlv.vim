" TLV schema files. Keywords count only where a declaration can begin: elsewhere they are ordinary names.
if exists('b:current_syntax')
    finish
endif

syntax match tlvComment "//.*$" contains=tlvTodo,@Spell
syntax match tlvDoc "^\s*\zs//\%(!\|/\%([^/]\|$\)\).*$" contains=tlvTodo,@Spell
syntax match tlvDoc "^\s*\zs///$"
syntax keyword tlvTodo TODO FIXME XXX contained
syntax region tlvPath start=+"+ end=+"\|$+ oneline
syntax match tlvImport "^\s*\zsimport\ze\s*\"" nextgroup=tlvPath skipwhite

" Heads of declarations, word by word.
syntax match tlvKeyword "^\s*\zs\%(enum\|struct\|message\|bytes\)\ze\s\+\h" nextgroup=tlvTypeName skipwhite
syntax match tlvKeyword "^\s*\zs\%(dynamic\s\+\)\=array\ze\s\+\h" nextgroup=tlvTypeName skipwhite
syntax match tlvKeyword "^\s*\zsdynamic\s\+bytes\ze\s\+\h" nextgroup=tlvTypeName skipwhite
syntax match tlvKeyword "^\s*\zsunion\ze\s\+\h" nextgroup=tlvTypeName skipwhite
syntax match tlvKeyword "^\s*\zsprefix\ze\s\+\h" nextgroup=tlvTypeName skipwhite
syntax match tlvKeyword "^\s*\zsreserved\ze\s\+\d" nextgroup=tlvNumber skipwhite
syntax match tlvTo "\<to\>\ze\s\+\d"
syntax match tlvTypeName "\h\w*" contained nextgroup=tlvOf,tlvBy,tlvCounted,tlvKey skipwhite
syntax match tlvOf "\<of\>" contained nextgroup=tlvScalar,tlvElement skipwhite
syntax match tlvElement "\h\w*" contained nextgroup=tlvCounted skipwhite
syntax match tlvCounted "\<counted\s\+by\>" contained nextgroup=tlvCount skipwhite
syntax match tlvCount "\h\w*" contained nextgroup=tlvAs skipwhite
syntax match tlvBy "\<by\>" contained nextgroup=tlvSelector skipwhite
syntax match tlvSelector "\h\w*" contained nextgroup=tlvSelectorName skipwhite
syntax match tlvSelectorName "\h\w*" contained nextgroup=tlvIn skipwhite
syntax match tlvIn "\<in\>" contained nextgroup=tlvElement skipwhite
syntax match tlvKey "\<key\ze\s\+\d" contained
syntax match tlvScalar "\<\%(char\|u\=int\%(8\|16\|32\|64\)\)\>" contained nextgroup=tlvCounted,tlvMember skipwhite
syntax match tlvNumber "\<\%(\d\+\|0[xX]\x\+\)\>"

" Members, alternatives and enumerators.
syntax region tlvBody start="{" end="}" transparent fold
    \ contains=tlvDoc,tlvComment,tlvScalar,tlvType,tlvInPlace,tlvValue,tlvEnumerator,tlvReserved,tlvTo,tlvNumber,tlvAttribute
syntax match tlvType "\<\h\w*\ze\s\+\h" contained nextgroup=tlvMember skipwhite
syntax match tlvMember "\<\h\w*" contained nextgroup=tlvOf,tlvCounted,tlvAs skipwhite
syntax match tlvReserved "\<reserved\ze\s\+\d" contained

" Arrays in place.
syntax match tlvType "\<\h\w*\ze\s*\[" contained nextgroup=tlvRoom skipwhite
syntax match tlvInPlace "\<bytes\ze\s*\[" contained nextgroup=tlvRoom skipwhite
syntax match tlvInPlace "\<dynamic\s\+bytes\ze\s\+\h\w*\s\+counted\>" contained nextgroup=tlvMember skipwhite
syntax match tlvInPlace "\<dynamic\s\+array\ze\s\+\h\w*\s\+of\>" contained nextgroup=tlvMember skipwhite
syntax match tlvRoom "\[[^]]*\]" contained contains=tlvNumber nextgroup=tlvMember skipwhite
syntax match tlvAs "\<as\ze\s\+\h" contained nextgroup=tlvTypeName skipwhite
syntax match tlvValue "\<\h\w*\ze\s*[,:]" contained
syntax match tlvEnumerator "\<\h\w*\ze\s*=" contained
syntax match tlvAttribute "@\w\+" contained

syntax match tlvScalar "\<\%(char\|u\=int\%(8\|16\|32\|64\)\)\>\ze\s\+\h" contained nextgroup=tlvMember skipwhite
syntax match tlvScalar "\<\%(char\|u\=int\%(8\|16\|32\|64\)\)\>\ze\s*\[" contained nextgroup=tlvRoom skipwhite
syntax sync fromstart

highlight default link tlvComment Comment
highlight default link tlvDoc SpecialComment
highlight default link tlvTodo Todo
highlight default link tlvPath String
highlight default link tlvImport Include
highlight default link tlvKeyword Structure
highlight default link tlvInPlace Structure
highlight default link tlvReserved Statement
highlight default link tlvTo Statement
highlight default link tlvAs Statement
highlight default link tlvOf Statement
highlight default link tlvCounted Statement
highlight default link tlvBy Statement
highlight default link tlvIn Statement
highlight default link tlvKey Statement
highlight default link tlvTypeName Identifier
highlight default link tlvScalar Type
highlight default link tlvCount Type
highlight default link tlvNumber Number
highlight default link tlvValue Constant
highlight default link tlvEnumerator Constant
highlight default link tlvAttribute PreProc

let b:current_syntax = 'tlv'
