import time

def fib(n):
    if n < 2:
        return n
    return fib(n - 1) + fib(n - 2)

start = time.process_time()
result = fib(30)
print(time.process_time() - start, result)
